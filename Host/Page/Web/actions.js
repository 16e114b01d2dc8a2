// What can be done with a card as a whole, and what came of saving it.

import { api } from "./api.js";
import { button, el, icon, setText } from "./dom.js";
import { nameOf } from "./list.js";
import { texts } from "./texts.js";

function download(label, hint) {
  return el("a", { class: "button", download: true, title: hint }, icon("download"), el("span", { text: label }));
}

export class ActionsView {
  element = el("section", { class: "actions" });
  #name = el("h1", { class: "card-name", dir: "auto", tabindex: "-1" });
  #state = el("p", { class: "card-state" });
  #save;
  #vCard = download(texts.vCard, texts.vCardHint);
  #markup = download(texts.markup, texts.markupHint);
  #outcome = el("p", { class: "save-outcome", role: "status" });
  #problem = el("div", { class: "problem" });
  #pairing = el("select", { id: "pairing" });
  #pairingRow;
  #buttons = {};
  #card = null;
  #handlers;

  /// `handlers`: save(), act(action), remove(), pair(back).
  constructor(handlers) {
    this.#handlers = handlers;
    this.#save = button(texts.save, "book", { class: "button-main", onclick: () => handlers.save() });
    this.#buttons.read = button(texts.readAgain, "again", { onclick: () => handlers.act("read") });
    this.#buttons.swap = button(texts.swap, "swap", { onclick: () => handlers.act("swap") });
    this.#buttons.split = button(texts.split, "split", { onclick: () => handlers.act("split") });
    this.#buttons.remove = button(texts.remove, "trash", { onclick: () => handlers.remove() });
    const pair = button(texts.pair, "pair", { onclick: () => this.#pairing.value && handlers.pair(this.#pairing.value) });
    this.#pairingRow = el("div", { class: "pairing" }, el("label", { for: "pairing", text: texts.pairLabel }), this.#pairing, pair);
    const more = el("details", { class: "more" }, el("summary", { class: "button", text: texts.more }),
      el("div", { class: "more-list" }, ...Object.values(this.#buttons), this.#pairingRow));
    this.#closeByItself(more);
    this.element.append(
      el("div", { class: "actions-head" }, el("div", { class: "card-titles" }, this.#name, this.#state),
        el("div", { class: "buttons" }, this.#save, this.#vCard, this.#markup, more)),
      this.#problem, this.#outcome);
  }

  show(card, cards) {
    this.#card = card;
    setText(this.#name, nameOf(card));
    const isOpen = card.state === "done" || card.state === "failed";
    setText(this.#state, isOpen ? card.subtitle : texts.states[card.state]);
    this.#showSaving(card, isOpen);
    this.#showDownloads(card, isOpen);
    this.#showProblem(card);
    for (const name of ["swap", "split"]) this.#buttons[name].hidden = card.pictures.length < 2;
    this.#showPairing(card, cards);
  }

  focus() {
    this.#name.focus();
  }

  #showSaving(card, isOpen) {
    const isBusy = card.saving === "underway";
    const isAgain = card.saving === "done" && card.isChangedSinceSaving;
    this.#save.disabled = !isOpen || isBusy || (card.fields ?? []).length === 0 || (card.saving === "done" && !isAgain);
    setText(this.#save.lastChild, isBusy ? texts.saving : isAgain ? texts.saveAgain : card.saving === "done" ? texts.savedShort : texts.save);
    const { saved } = card;
    let text = "";
    if (saved && card.saving === "failed") text = [texts.notSaved(saved.failure), ...saved.remarks].join(" ");
    if (saved && card.saving === "done") {
      const by = saved.byName ? texts.byName : texts.byEmail;
      text = saved.isNew ? texts.savedNew(saved.where) : texts.savedUpdate(saved.updated, by, saved.where);
      text = [text, ...saved.remarks, isAgain ? texts.changedSince : ""].filter(Boolean).join(" ");
    }
    setText(this.#outcome, text);
    this.#outcome.hidden = text === "";
    this.#outcome.classList.toggle("is-problem", card.saving === "failed");
  }

  #showDownloads(card, isOpen) {
    const has = isOpen && (card.fields ?? []).length > 0;
    for (const [link, address] of [[this.#vCard, api.vCard(card.id)], [this.#markup, api.markup(card.id)]]) {
      if (has) link.href = address;
      else link.removeAttribute("href");
      link.setAttribute("aria-disabled", String(!has));
    }
  }

  #showProblem(card) {
    const lines = card.state === "failed" ? [card.problem] : card.remarks ?? [];
    const key = lines.join("\n");
    if (this.#problem.dataset.key === key) return;
    this.#problem.dataset.key = key;
    this.#problem.hidden = lines.length === 0;
    this.#problem.classList.toggle("is-problem", card.state === "failed");
    this.#problem.replaceChildren(
      icon("alert"),
      el("div", {},
        card.state === "failed" ? el("strong", { text: texts.failedTitle }) : null,
        ...lines.map((line) => el("p", { text: line })),
        card.state === "failed" ? button(texts.tryAgain, "again", { onclick: () => this.#handlers.act("read") }) : null));
  }

  #showPairing(card, cards) {
    const others = card.pictures.length === 1 ? cards.filter((other) => other.id !== card.id && other.pictures.length === 1) : [];
    this.#pairingRow.hidden = others.length === 0;
    const key = JSON.stringify(others.map((other) => [other.id, nameOf(other)]));
    if (this.#pairing.dataset.key === key) return;
    this.#pairing.dataset.key = key;
    this.#pairing.replaceChildren(
      el("option", { value: "", text: texts.pairChoose }),
      ...others.map((other) => el("option", { value: other.id, text: nameOf(other) })));
  }

  #closeByItself(details) {
    details.addEventListener("keydown", (event) => {
      if (event.key !== "Escape" || !details.open) return;
      details.open = false;
      details.firstChild.focus();
    });
    details.addEventListener("click", (event) => {
      if (event.target.closest(".more-list button")) details.open = false;
    });
    document.addEventListener("pointerdown", (event) => {
      if (!details.contains(event.target)) details.open = false;
    });
  }
}
