// The fields of a card, to be put right. What is typed goes to the program at once; what comes from there never
// overwrites what is being typed.

import { button, el, icon, setText } from "./dom.js";
import { texts } from "./texts.js";

const order = ["name", "title", "department", "company", "email", "phone", "mobile", "fax", "url", "address", "twitter", "skype", "other"];
const pauseWhileTyping = 180;
const sureFrom = 70;

function kindOptions(selected) {
  return order.map((kind) => el("option", { value: kind, text: texts.kinds[kind], selected: kind === selected }));
}

class FieldRow {
  id;
  element;
  #kind;
  #text;
  #mark;
  #remove;
  #sent = "";
  #timer = null;
  #handlers;

  constructor(field, handlers) {
    this.id = field.id;
    this.#handlers = handlers;
    this.#kind = el("select", { class: "field-kind", "aria-label": texts.kindLabel }, ...kindOptions(field.kind));
    this.#text = el("textarea", { class: "field-text", rows: "1", dir: "auto", spellcheck: "false", maxlength: "1000" });
    this.#mark = el("span", { class: "field-mark" });
    this.#remove = button("", "close", { iconOnly: true, class: "button-quiet field-remove" });
    this.element = el("li", { class: "field" }, this.#kind, this.#text, this.#mark, this.#remove);
    this.#listen();
    this.show(field);
  }

  show(field) {
    this.field = field;
    this.element.className = `field kind-${field.kind}`;
    this.element.dataset.field = field.id;
    if (document.activeElement !== this.#kind) this.#kind.value = field.kind;
    if (this.#timer === null && this.#text.value !== field.text && !this.#isBeingTyped(field)) this.#text.value = field.text;
    this.#sent = field.text;
    const kind = texts.kinds[field.kind];
    this.#text.setAttribute("aria-label", texts.textLabel(kind));
    this.#remove.setAttribute("aria-label", texts.removeField(kind, field.text));
    this.#remove.title = texts.removeField(kind, "").trim();
    this.#showMark(field);
  }

  mark(isMarked) {
    this.element.classList.toggle("is-marked", isMarked);
  }

  focus() {
    this.#text.focus();
    this.element.scrollIntoView({ block: "nearest" });
  }

  /// An answer to what was typed before must not take away what was typed since.
  #isBeingTyped(field) {
    return document.activeElement === this.#text && field.isCorrected && this.#text.value !== this.#sent;
  }

  #showMark(field) {
    const isUnsure = field.weight !== null && field.weight < sureFrom;
    const title = field.isCorrected ? texts.corrected : isUnsure ? texts.unsure(field.weight) : "";
    const isOutside = !field.isInNote && field.text !== "";
    this.#mark.title = [title, isOutside ? texts.outsideHint : ""].filter(Boolean).join(". ");
    this.#mark.replaceChildren(
      ...(isOutside ? [el("span", { class: "chip", text: texts.outside })] : []),
      ...(field.isCorrected ? [icon("check")] : []),
      ...(isUnsure ? [el("span", { class: "chip chip-warn", text: texts.unsureShort, "aria-hidden": "true" })] : []),
      ...(title ? [el("span", { class: "unseen", text: title })] : []),
    );
  }

  #listen() {
    this.#kind.addEventListener("change", () => this.#handlers.change(this.id, { kind: this.#kind.value }));
    this.#text.addEventListener("input", () => this.#sendSoon());
    this.#text.addEventListener("blur", () => this.#sendNow());
    this.#text.addEventListener("keydown", (event) => {
      if (event.key !== "Enter" || event.shiftKey) return;
      event.preventDefault();
      this.#sendNow();
    });
    this.#remove.addEventListener("click", () => this.#handlers.remove(this.id));
    for (const [name, target] of [["pointerenter", true], ["pointerleave", false]])
      this.element.addEventListener(name, () => this.#handlers.hover(target ? this.field : null));
    this.element.addEventListener("focusin", () => this.#handlers.focus(this.field));
    this.element.addEventListener("focusout", () => this.#handlers.focus(null));
  }

  #sendSoon() {
    clearTimeout(this.#timer);
    this.#timer = setTimeout(() => this.#sendNow(), pauseWhileTyping);
  }

  #sendNow() {
    clearTimeout(this.#timer);
    this.#timer = null;
    if (this.#text.value === this.#sent) return;
    this.#sent = this.#text.value;
    this.#handlers.change(this.id, { text: this.#text.value });
  }
}

export class FieldsView {
  element = el("section", { class: "panel fields-panel", "aria-labelledby": "fields-title" });
  #list = el("ul", { class: "fields" });
  #hint = el("p", { class: "hint" });
  #newKind = el("select", { class: "field-kind", "aria-label": texts.newKindLabel }, ...kindOptions("phone"));
  #adding = el("div", { class: "field-new" });
  #rows = new Map();
  #card = null;
  #focusNew = false;
  #handlers;

  /// `handlers`: change(field, change), add(kind), remove(field), hover(field or null), focus(field or null).
  constructor(handlers) {
    this.#handlers = handlers;
    this.#adding.append(this.#newKind, button(texts.addField, "plus", { onclick: () => this.#add() }));
    this.element.append(el("h2", { id: "fields-title", text: texts.fieldsTitle }), this.#hint, this.#list, this.#adding);
  }

  show(card) {
    if (this.#card?.id !== card.id || this.#card?.pictures[0]?.id !== card.pictures[0]?.id) this.#clear();
    this.#card = card;
    const isOpen = card.state === "done" || card.state === "failed";
    const fields = this.#inOrder(card.fields ?? []);
    this.#dropOthers(fields);
    fields.forEach((field, position) => this.#place(field, position));
    setText(this.#hint, isOpen ? (fields.length === 0 ? texts.fieldsEmpty : "") : texts.fieldsWait);
    this.#hint.hidden = this.#hint.textContent === "";
    this.#adding.hidden = !isOpen;
  }

  mark(field) {
    for (const [id, row] of this.#rows) row.mark(id === field?.id);
  }

  focus(field) {
    this.#rows.get(field.id)?.focus();
  }

  focusFirst() {
    this.#list.querySelector("textarea")?.focus();
  }

  /// Rows keep their places while they are worked on: the order is that of the first look.
  #inOrder(fields) {
    const place = (field) => {
      const known = this.#rows.get(field.id)?.place;
      return known ?? order.indexOf(field.kind) + (field.side === null ? 100 : 0);
    };
    return [...fields].sort((one, other) => place(one) - place(other) || one.id - other.id);
  }

  #place(field, position) {
    let row = this.#rows.get(field.id);
    const isNew = row === undefined;
    if (isNew) {
      row = new FieldRow(field, this.#handlers);
      row.place = order.indexOf(field.kind) + (field.side === null ? 100 : 0);
      this.#rows.set(field.id, row);
    } else {
      row.show(field);
    }
    if (this.#list.children[position] !== row.element) this.#list.insertBefore(row.element, this.#list.children[position] ?? null);
    if (isNew && this.#focusNew && field.side === null) {
      this.#focusNew = false;
      row.focus();
    }
  }

  #dropOthers(fields) {
    const ids = new Set(fields.map((field) => field.id));
    for (const [id, row] of this.#rows) {
      if (ids.has(id)) continue;
      const hadFocus = row.element.contains(document.activeElement);
      const next = row.element.nextElementSibling ?? row.element.previousElementSibling;
      row.element.remove();
      this.#rows.delete(id);
      if (hadFocus) (next?.querySelector("textarea") ?? this.#newKind).focus();
    }
  }

  #clear() {
    this.#rows.clear();
    this.#list.replaceChildren();
  }

  #add() {
    this.#focusNew = true;
    this.#handlers.add(this.#newKind.value);
  }
}
