// Puts the page together: what is chosen, what the program has, and what is done with it.

import { ActionsView } from "./actions.js";
import { api, Gone, Refusal } from "./api.js";
import { button, el, icon, setText } from "./dom.js";
import { FieldsView } from "./fields.js";
import { CardList, nameOf } from "./list.js";
import { NoteView } from "./note.js";
import { PictureView } from "./picture.js";
import { Pile } from "./pile.js";
import { texts } from "./texts.js";
import { Toasts } from "./toasts.js";
import { filesIn, Uploads } from "./uploads.js";
import { makeWelcome } from "./welcome.js";

const pile = new Pile();
const toasts = new Toasts();
const uploads = new Uploads(toasts);
/// Cards with all their fields, by their identifiers.
const details = new Map();
let selected = null;
/// Changes go out one after the other, so that the last one typed is the last one there.
let changes = Promise.resolve();

const picker = el("input", { type: "file", multiple: true, accept: "image/*,.heic,.heif", hidden: true, "aria-hidden": "true" });
picker.addEventListener("change", () => {
  const files = [...picker.files];
  picker.value = "";
  addFiles(files);
});

const list = new CardList({
  choose: (id) => choose(id),
  open: (id) => {
    choose(id);
    fields.focusFirst();
  },
  remove: (id) => remove(id),
  pair: (front, back) => pair(front, back),
});
const picture = new PictureView({
  hover: (field) => mark(field),
  choose: (field) => fields.focus(field),
});
const fields = new FieldsView({
  change: (field, change) => correct((id) => api.changeField(id, field, change)),
  add: (kind) => correct((id) => api.addField(id, kind, "")),
  remove: (field) => correct((id) => api.removeField(id, field)),
  hover: (field) => mark(field ?? focused),
  focus: (field) => {
    focused = field;
    mark(field);
  },
});
let focused = null;
const note = new NoteView();
const actions = new ActionsView({
  save: () => correct((id) => api.act(id, "save")),
  act: (action) => correct((id) => api.act(id, action)),
  remove: () => remove(selected),
  pair: (back) => pair(selected, back),
});

const progress = el("p", { class: "progress-text", role: "status", "aria-live": "polite" });
const bar = el("progress", { class: "progress-bar", max: "1", value: "0", "aria-hidden": "true" });
const banner = el("div", { class: "banner", role: "alert", hidden: true });
const downloadAll = el("a", { class: "button", href: api.everything, download: true, title: texts.downloadAllHint },
  icon("download"), el("span", { text: texts.downloadAll }));
downloadAll.addEventListener("click", () => toasts.say(texts.zipping));
const addButton = button(texts.add, "plus", { onclick: () => picker.click() });
const header = el("header", { class: "top" },
  el("a", { class: "skip", href: "#card", text: texts.skip }),
  el("div", { class: "brand" }, el("img", { src: "icon.svg", alt: "", width: "28", height: "28" }), el("span", { text: texts.title })),
  progress,
  el("div", { class: "buttons" }, addButton, downloadAll));
const where = el("span");
const welcome = makeWelcome({ where, choose: () => picker.click(), sample: () => addSample() });
const desk = el("div", { class: "desk" },
  el("nav", { class: "side", "aria-label": texts.listLabel }, list.element, list.hint),
  el("main", { class: "card", id: "card", tabindex: "-1" }, actions.element, picture.element, fields.element, note.element));
const dropArea = el("div", { class: "drop-area", "aria-hidden": "true" }, el("p", { text: texts.dropHere }));

document.body.append(header, bar, banner, welcome, desk, dropArea, toasts.element, picker);

function mark(field) {
  picture.mark(field);
  fields.mark(field);
}

function choose(id) {
  if (!pile.find(id)) return;
  selected = id;
  focused = null;
  show();
  list.reveal();
}

function keepSelection() {
  if (pile.find(selected)) return;
  selected = pile.cards.find((card) => card.id > selected)?.id ?? pile.cards.at(-1)?.id ?? null;
}

function show() {
  keepSelection();
  const isEmpty = pile.cards.length === 0 && uploads.pending.length === 0;
  welcome.hidden = !isEmpty;
  desk.hidden = isEmpty;
  if (pile.recogniser !== null) setText(where, pile.recogniser ? texts.readThere(pile.recogniser) : texts.readHere);
  downloadAll.hidden = !pile.cards.some((card) => card.state === "done");
  list.show(pile.cards, uploads.pending, selected);
  showProgress();
  showCard();
}

function showCard() {
  const summary = pile.find(selected);
  desk.classList.toggle("has-no-card", !summary);
  if (!summary) return;
  const known = details.get(selected);
  // What is held may be newer than the list, which comes another way.
  const card = known && known.revision >= summary.revision ? known : { ...(known?.pictures[0]?.id === summary.pictures[0]?.id ? known : {}), ...summary };
  if (!known || known.revision < summary.revision) fetchCard(selected);
  actions.show(card, pile.cards);
  picture.show(card);
  fields.show(card);
  note.show(card);
  mark(focused);
}

async function fetchCard(id) {
  try {
    take(await api.card(id));
  } catch (problem) {
    if (problem.status !== 404) report(problem);
  }
}

function take(card) {
  const known = details.get(card.id);
  if (known && known.revision >= card.revision) return;
  details.set(card.id, card);
  if (card.id === selected) show();
}

function correct(how) {
  const id = selected;
  changes = changes.then(() => sendUntilThere(() => how(id)));
  return changes;
}

/// What was typed while the program was away is sent when it is back.
async function sendUntilThere(how) {
  for (;;) {
    try {
      return take(await how());
    } catch (problem) {
      if (!(problem instanceof Gone)) return report(problem);
    }
    await new Promise((done) => setTimeout(done, 500));
  }
}

async function remove(id) {
  const card = pile.find(id);
  if (!card) return;
  try {
    await api.remove(id);
    toasts.say(texts.removed(nameOf(card)), { label: texts.undo, run: () => restore(id) });
  } catch (problem) {
    report(problem);
  }
}

async function restore(id) {
  try {
    take(await api.act(id, "restore"));
    selected = id;
  } catch (problem) {
    report(problem);
  }
}

async function pair(front, back) {
  try {
    take(await api.act(front, "back", { card: back }));
    choose(front);
    toasts.say(texts.paired);
  } catch (problem) {
    report(problem);
  }
}

function addFiles(files) {
  if (files.length > 0) uploads.add(files);
}

async function addSample() {
  try {
    addFiles([await api.sample()]);
  } catch (problem) {
    report(problem);
  }
}

function report(problem) {
  if (problem instanceof Gone) return;
  if (!(problem instanceof Refusal)) throw problem;
  toasts.warn(problem.message);
}

function progressText() {
  const open = pile.cards.filter((card) => !["done", "failed"].includes(card.state));
  if (open.some((card) => card.state === "starting")) return texts.progressStarting;
  if (open.length > 0) return texts.progress(Math.min(pile.done + 1, pile.total), pile.total);
  if (uploads.pending.length > 0) return texts.progressSending(uploads.done, uploads.total);
  const ready = pile.cards.filter((card) => card.state === "done").length;
  return ready > 0 ? texts.progressDone(ready) : "";
}

function showProgress() {
  setText(progress, progressText());
  const isBusy = pile.done < pile.total || uploads.pending.length > 0;
  bar.classList.toggle("is-busy", isBusy);
  bar.value = pile.total > 0 ? pile.done / pile.total : 0;
  document.title = isBusy && pile.total > 0 ? `${pile.done}/${pile.total} · ${texts.title}` : texts.title;
}

function showLink() {
  banner.hidden = pile.link === "there";
  const text = pile.link === "locked" ? texts.locked : texts.gone;
  banner.replaceChildren(...(banner.hidden ? [] : [icon("alert"), el("p", { text })]));
  document.body.classList.toggle("is-cut-off", !banner.hidden);
}

pile.addEventListener("change", show);
pile.addEventListener("lost", showLink);
pile.addEventListener("back", (event) => {
  showLink();
  if (event.detail.isOther) {
    details.clear();
    selected = null;
  }
  toasts.say(event.detail.isOther ? texts.startedAnew : texts.back_);
});
uploads.addEventListener("change", show);

const hasFiles = (event) => [...(event.dataTransfer?.types ?? [])].includes("Files");
let depth = 0;
window.addEventListener("dragenter", (event) => {
  if (!hasFiles(event)) return;
  depth += 1;
  document.body.classList.add("is-dropping");
});
window.addEventListener("dragleave", (event) => {
  if (hasFiles(event) && --depth <= 0) document.body.classList.remove("is-dropping");
});
window.addEventListener("dragover", (event) => {
  if (hasFiles(event)) event.preventDefault();
});
window.addEventListener("drop", async (event) => {
  depth = 0;
  document.body.classList.remove("is-dropping");
  if (!hasFiles(event)) return;
  event.preventDefault();
  addFiles(await filesIn(event.dataTransfer));
});
window.addEventListener("paste", (event) => addFiles([...(event.clipboardData?.files ?? [])]));

show();
pile.watch();
