// Photographs on their way to the program, card by card in the order they were dropped.

import { api, Gone, Refusal } from "./api.js";
import { texts } from "./texts.js";

const largest = 64 * 1024 * 1024;
const namesAtOnce = 400;

export class Uploads extends EventTarget {
  /// What is on its way or waits for it: {key, name}.
  pending = [];
  done = 0;
  total = 0;
  #last = 0;
  #tail = Promise.resolve();
  #toasts;

  constructor(toasts) {
    super();
    this.#toasts = toasts;
  }

  /// Ends when all of them are there, or could not be brought there.
  async add(fileList) {
    const files = [...fileList].filter((file) => this.#isSmallEnough(file));
    files.sort((one, other) => one.name.localeCompare(other.name, undefined, { numeric: true }));
    for (let start = 0; start < files.length; start += namesAtOnce) await this.#addSome(files.slice(start, start + namesAtOnce));
  }

  #isSmallEnough(file) {
    if (file.size <= largest) return true;
    this.#toasts.warn(texts.tooLarge(file.name));
    return false;
  }

  async #addSome(files) {
    let cards;
    try {
      cards = await api.pairs(files.map((file) => file.name));
    } catch (problem) {
      return this.#report(problem);
    }
    const sendings = cards.map((positions) => {
      const sides = positions.map((position) => files[position]);
      return { key: `sending-${++this.#last}`, name: sides[0].name, sides };
    });
    if (this.pending.length === 0) this.done = this.total = 0;
    this.total += sendings.length;
    this.pending.push(...sendings);
    this.#changed();
    // One after the other, whoever dropped when: the list keeps the order.
    this.#tail = this.#tail.then(() => this.#sendAll(sendings));
    await this.#tail;
  }

  async #sendAll(sendings) {
    for (const sending of sendings) {
      try {
        await this.#send(sending.sides);
      } catch (problem) {
        this.#report(problem);
      }
      this.pending = this.pending.filter((other) => other !== sending);
      this.done += 1;
      this.#changed();
    }
  }

  async #send(sides) {
    const pictures = [];
    let refused = null;
    for (const side of sides) {
      try {
        pictures.push(await api.addPicture(side));
      } catch (problem) {
        // The other side is still a card.
        if (!(problem instanceof Refusal)) throw problem;
        refused = problem;
      }
    }
    if (pictures.length > 0) await api.addCard(pictures);
    if (refused) throw refused;
  }

  #report(problem) {
    if (problem instanceof Gone) return this.#toasts.warn(texts.gone);
    if (!(problem instanceof Refusal)) throw problem;
    this.#toasts.warn(problem.status === 503 ? texts.tooMany : problem.message);
  }

  #changed() {
    this.dispatchEvent(new Event("change"));
  }
}

/// The files that were dropped, those in dropped folders too.
export async function filesIn(transfer) {
  const entries = [...(transfer.items ?? [])].map((item) => item.webkitGetAsEntry?.()).filter(Boolean);
  if (!entries.some((entry) => entry.isDirectory)) return [...transfer.files];
  return (await Promise.all(entries.map(filesBelow))).flat();
}

async function filesBelow(entry) {
  if (entry.isFile) return [await new Promise((done, fail) => entry.file(done, fail))];
  const reader = entry.createReader();
  const files = [];
  for (;;) {
    const some = await new Promise((done, fail) => reader.readEntries(done, fail));
    if (some.length === 0) return files;
    files.push(...(await Promise.all(some.map(filesBelow))).flat());
  }
}
