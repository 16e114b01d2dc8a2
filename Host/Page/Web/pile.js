// The cards as the program has them, kept up to date: one request waits for news all the time. All windows see the same.

import { api, Gone, Refusal } from "./api.js";

const pause = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));

export class Pile extends EventTarget {
  cards = [];
  done = 0;
  total = 0;
  addressBook = "";
  /// "there", "gone", or "locked".
  link = "there";
  #run = "";
  #version = 0;

  find(id) {
    return this.cards.find((card) => card.id === id);
  }

  /// Never ends.
  async watch() {
    for (;;) {
      try {
        this.#take(await api.list(this.#run, this.#version));
      } catch (problem) {
        if (!(problem instanceof Gone) && !(problem instanceof Refusal)) throw problem;
        this.#lose(problem.status === 403 ? "locked" : "gone");
        await pause(1000);
      }
    }
  }

  #take(list) {
    const isOther = this.#run !== "" && this.#run !== list.run;
    const wasAway = this.link !== "there";
    this.link = "there";
    this.#run = list.run;
    this.#version = list.version;
    for (const name of ["cards", "done", "total", "addressBook"]) this[name] = list[name];
    if (wasAway) this.dispatchEvent(new CustomEvent("back", { detail: { isOther } }));
    this.dispatchEvent(new Event("change"));
  }

  #lose(link) {
    if (this.link === link) return;
    this.link = link;
    this.dispatchEvent(new Event("lost"));
  }
}
