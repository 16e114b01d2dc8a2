// The cards as the program has them, kept up to date: one request waits for news all the time. All windows see the same.

import { api, Gone, Refusal } from "./api.js";

const hiddenPause = 2000;

/// Ends early, and well, when it is called off.
const pause = (milliseconds, signal) =>
  new Promise((done) => {
    const timer = setTimeout(done, milliseconds);
    signal?.addEventListener("abort", () => (clearTimeout(timer), done()), { once: true });
  });

export class Pile extends EventTarget {
  cards = [];
  done = 0;
  total = 0;
  addressBook = "";
  /// Where the pictures are sent to be read; empty when they stay on this machine, null while that is not known.
  recogniser = null;
  /// "there", "gone", or "locked".
  link = "there";
  #run = "";
  #version = 0;
  #wake = new AbortController();

  constructor() {
    super();
    document.addEventListener("visibilitychange", () => {
      this.#wake.abort();
      this.#wake = new AbortController();
    });
  }

  find(id) {
    return this.cards.find((card) => card.id === id);
  }

  /// Never ends. A browser has few connections to one host for all its windows, so those that nobody sees do not keep
  /// one, but ask now and then.
  async watch() {
    for (;;) {
      const { signal } = this.#wake;
      try {
        this.#take(await api.list(this.#run, document.hidden ? 0 : this.#version, signal));
        if (document.hidden) await pause(hiddenPause, signal);
      } catch (problem) {
        if (problem.name === "AbortError") continue;
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
    for (const name of ["cards", "done", "total", "addressBook", "recogniser"]) this[name] = list[name];
    if (wasAway) this.dispatchEvent(new CustomEvent("back", { detail: { isOther } }));
    this.dispatchEvent(new Event("change"));
  }

  #lose(link) {
    if (this.link === link) return;
    this.link = link;
    this.dispatchEvent(new Event("lost"));
  }
}
