// The finished note. It is markup, and stays in a frame of its own in which nothing runs. Two frames take turns, so that
// the old note stands until the new one is there.

import { api } from "./api.js";
import { el, setText } from "./dom.js";
import { texts } from "./texts.js";

export class NoteView {
  element = el("section", { class: "panel note-panel", "aria-labelledby": "note-title" });
  #hint = el("p", { class: "hint" });
  #stage = el("div", { class: "note-stage" });
  #shown = "";

  constructor() {
    this.element.append(el("h2", { id: "note-title", text: texts.noteTitle }), this.#hint, this.#stage);
  }

  show(card) {
    const hasNote = (card.fields ?? []).length > 0 && (card.state === "done" || card.state === "failed");
    setText(this.#hint, hasNote ? "" : card.state === "done" || card.state === "failed" ? texts.fieldsEmpty : texts.noteWait);
    this.#hint.hidden = hasNote;
    this.#stage.hidden = !hasNote;
    if (!hasNote) {
      this.#stage.replaceChildren();
      this.#shown = "";
      return;
    }
    // Saving changes the card, not its note.
    const key = `${card.id} ${JSON.stringify(card.fields)}`;
    if (key === this.#shown) return;
    this.#shown = key;
    this.#load(api.note(card.id, card.revision));
  }

  #load(address) {
    const frame = el("iframe", {
      class: "note-frame is-loading",
      title: texts.noteFrame,
      sandbox: "allow-popups allow-popups-to-escape-sandbox",
      src: address,
    });
    frame.addEventListener("load", () => {
      if (!frame.isConnected) return;
      while (this.#stage.firstChild !== frame) this.#stage.firstChild.remove();
      frame.classList.remove("is-loading");
    });
    this.#stage.append(frame);
  }
}
