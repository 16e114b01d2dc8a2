// The cards in a row: a list box with one stop for the Tab key.

import { api } from "./api.js";
import { el, icon, setText } from "./dom.js";
import { texts } from "./texts.js";

const dragType = "application/x-qvcardscan-card";

export function nameOf(card) {
  return card.title || card.pictures[0]?.name || texts.unnamed;
}

function stateOf(card) {
  if (card.state !== "done") return texts.states[card.state];
  if (card.saving === "done" && !card.isChangedSinceSaving) return texts.savedShort;
  return card.title ? card.subtitle : texts.nothingRead;
}

export class CardList {
  element = el("div", { class: "list", role: "listbox", "aria-label": texts.listLabel, "aria-describedby": "list-hint" });
  hint = el("p", { id: "list-hint", class: "hint list-hint", text: texts.listHint });
  #rows = new Map();
  #selected = null;
  #dragged = null;
  #handlers;

  /// `handlers`: choose(id), remove(id), pair(front, back), open(id).
  constructor(handlers) {
    this.#handlers = handlers;
    this.element.addEventListener("keydown", (event) => this.#onKey(event));
  }

  /// `sending`: names of cards that are on their way.
  show(cards, sending, selected) {
    this.#selected = selected;
    const wanted = [
      ...cards.map((card) => ({ key: card.id, card })),
      ...sending.map((entry) => ({ key: entry.key, card: { ...entry, title: entry.name, state: "sending", pictures: [] } })),
    ];
    const hadFocus = this.element.contains(document.activeElement);
    const keys = new Set(wanted.map((entry) => entry.key));
    for (const [key, row] of this.#rows) {
      if (keys.has(key)) continue;
      row.remove();
      this.#rows.delete(key);
    }
    wanted.forEach(({ key, card }, position) => {
      if (!this.#rows.has(key)) this.#rows.set(key, this.#makeRow(key));
      const row = this.#rows.get(key);
      this.#fillRow(row, card);
      if (this.element.children[position] !== row) this.element.insertBefore(row, this.element.children[position] ?? null);
    });
    if (hadFocus && !this.element.contains(document.activeElement)) this.focus();
  }

  focus() {
    (this.#rows.get(this.#selected) ?? this.element.firstElementChild)?.focus();
  }

  reveal() {
    this.#rows.get(this.#selected)?.scrollIntoView({ block: "nearest", inline: "nearest" });
  }

  #makeRow(id) {
    const row = el(
      "div",
      { class: "row", role: "option", draggable: "true", "data-id": id },
      el("div", { class: "row-picture" }),
      el("div", { class: "row-texts" }, el("div", { class: "row-name", dir: "auto" }), el("div", { class: "row-state" })),
      el("div", { class: "row-mark", "aria-hidden": "true" }),
    );
    row.addEventListener("click", () => this.#handlers.choose(id));
    this.#makeDraggable(row, id);
    return row;
  }

  #fillRow(row, card) {
    const isSelected = row.dataset.id === this.#selected;
    row.setAttribute("aria-selected", String(isSelected));
    row.tabIndex = isSelected || (this.#selected === null && row === this.element.firstElementChild) ? 0 : -1;
    row.dataset.state = card.state;
    row.classList.toggle("is-saved", card.saving === "done" && !card.isChangedSinceSaving);
    const state = stateOf(card);
    setText(row.querySelector(".row-name"), nameOf(card));
    setText(row.querySelector(".row-state"), state);
    row.setAttribute("aria-label", [nameOf(card), state, card.pictures.length > 1 ? texts.twoSides : ""].filter(Boolean).join(", "));
    this.#fillPictures(row.querySelector(".row-picture"), card.pictures);
    this.#fillMark(row, card);
  }

  #fillPictures(frame, pictures) {
    const key = pictures.map((picture) => `${picture.id}/${picture.turn}`).join(" ");
    if (frame.dataset.key === key) return;
    frame.dataset.key = key;
    frame.replaceChildren(
      ...[...pictures].reverse().map((picture) => {
        const image = el("img", { src: api.thumbnail(picture.id), alt: "", loading: "lazy", draggable: "false" });
        image.style.rotate = `${picture.turn}deg`;
        return el("span", { class: picture.turn % 180 === 0 ? "row-side" : "row-side is-turned" }, image);
      }),
    );
  }

  #fillMark(row, card) {
    const mark = row.querySelector(".row-mark");
    const kind = row.classList.contains("is-saved") ? "check" : card.state === "failed" ? "alert" : card.state === "done" ? "" : "spinner";
    if (mark.dataset.kind === kind) return;
    mark.dataset.kind = kind;
    mark.replaceChildren(...(kind === "" ? [] : kind === "spinner" ? [el("span", { class: "spinner" })] : [icon(kind)]));
  }

  #onKey(event) {
    const ids = [...this.element.children].map((row) => row.dataset.id);
    const position = ids.indexOf(event.target.dataset?.id ?? "");
    if (position < 0) return;
    const steps = { ArrowDown: 1, ArrowRight: 1, ArrowUp: -1, ArrowLeft: -1, Home: -ids.length, End: ids.length };
    if (event.key in steps) {
      const next = Math.min(Math.max(position + steps[event.key], 0), ids.length - 1);
      this.#handlers.choose(ids[next]);
      this.#rows.get(ids[next])?.focus();
    } else if (event.key === "Delete" || event.key === "Backspace") {
      this.#handlers.remove(ids[position]);
    } else if (event.key === "Enter" || event.key === " ") {
      this.#handlers.open(ids[position]);
    } else {
      return;
    }
    event.preventDefault();
  }

  #makeDraggable(row, id) {
    row.addEventListener("dragstart", (event) => {
      this.#dragged = id;
      event.dataTransfer.setData(dragType, id);
      event.dataTransfer.effectAllowed = "link";
    });
    row.addEventListener("dragend", () => (this.#dragged = null));
    row.addEventListener("dragover", (event) => {
      if (this.#dragged === null || this.#dragged === id) return;
      event.preventDefault();
      row.classList.add("is-target");
    });
    row.addEventListener("dragleave", () => row.classList.remove("is-target"));
    row.addEventListener("drop", (event) => {
      row.classList.remove("is-target");
      if (this.#dragged === null || this.#dragged === id) return;
      event.preventDefault();
      event.stopPropagation();
      this.#handlers.pair(id, this.#dragged);
    });
  }
}
