// Short messages at the edge of the window. Problems stay until they are dismissed; others go by themselves.

import { button, el } from "./dom.js";
import { texts } from "./texts.js";

const shownFor = 8000;

export class Toasts {
  element = el("div", { class: "toasts" });
  #polite = el("div", { "aria-live": "polite", role: "status" });
  #urgent = el("div", { role: "alert" });

  constructor() {
    this.element.append(this.#urgent, this.#polite);
  }

  say(text, action) {
    const toast = this.#add(this.#polite, "toast", text, action);
    setTimeout(() => toast.remove(), shownFor);
  }

  warn(text) {
    for (const toast of this.#urgent.children) {
      if (toast.firstChild.textContent === text) return;
    }
    this.#add(this.#urgent, "toast toast-problem", text);
  }

  #add(where, className, text, action) {
    const toast = el("div", { class: className }, el("span", { class: "toast-text", text }));
    if (action) {
      toast.append(button(action.label, null, { class: "button-quiet", onclick: () => (toast.remove(), action.run()) }));
    }
    toast.append(button(texts.dismiss, "close", { iconOnly: true, class: "button-quiet", onclick: () => toast.remove() }));
    where.append(toast);
    return toast;
  }
}
