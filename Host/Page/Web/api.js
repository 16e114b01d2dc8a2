// What the page asks of the program.

import { texts } from "./texts.js";

/// The program said no; its words are for the person.
export class Refusal extends Error {
  constructor(status, message) {
    super(message);
    this.status = status;
  }
}

/// The program did not answer at all.
export class Gone extends Error {}

const base = "api/";

async function ask(method, path, { json, body, type, signal } = {}) {
  let answer;
  try {
    answer = await fetch(base + path, {
      method,
      signal,
      headers: json !== undefined ? { "Content-Type": "application/json" } : type ? { "Content-Type": type } : {},
      body: json !== undefined ? JSON.stringify(json) : body,
    });
  } catch (problem) {
    if (problem.name === "AbortError") throw problem;
    throw new Gone();
  }
  if (answer.status === 204) return null;
  const content = await answer.json().catch((problem) => {
    if (problem.name === "AbortError") throw problem;
    return null;
  });
  if (answer.ok && content !== null) return content;
  throw new Refusal(answer.status, content?.error ?? (answer.status === 403 ? texts.locked : texts.failed));
}

const card = (id) => `cards/${encodeURIComponent(id)}`;

export const api = {
  list: (run, seen, signal) => ask("GET", `cards?run=${encodeURIComponent(run)}&seen=${seen}`, { signal }),
  pairs: async (names) => (await ask("POST", "pairs", { json: { names } })).cards,
  addPicture: async (file) => {
    const name = encodeURIComponent(file.name);
    return (await ask("POST", `pictures?name=${name}`, { body: file, type: "application/octet-stream" })).id;
  },
  addCard: async (pictures) => (await ask("POST", "cards", { json: { pictures } })).id,
  card: (id) => ask("GET", card(id)),
  remove: (id) => ask("DELETE", card(id)),
  act: (id, action, json = {}) => ask("POST", `${card(id)}/${action}`, { json }),
  changeField: (id, field, change) => ask("PATCH", `${card(id)}/fields/${field}`, { json: change }),
  addField: (id, kind, text) => ask("POST", `${card(id)}/fields`, { json: { kind, text } }),
  removeField: (id, field) => ask("DELETE", `${card(id)}/fields/${field}`),
  sample: async () => {
    const answer = await fetch("sample.jpg").catch(() => {
      throw new Gone();
    });
    return new File([await answer.blob()], texts.sampleName, { type: "image/jpeg" });
  },

  thumbnail: (picture) => `${base}pictures/${picture}/thumbnail`,
  view: (picture) => `${base}pictures/${picture}/view`,
  note: (id, revision) => `${base}${card(id)}/note?revision=${revision}`,
  vCard: (id) => `${base}${card(id)}/contact.vcf`,
  markup: (id) => `${base}${card(id)}/note.qvml`,
  everything: `${base}everything.zip`,
};
