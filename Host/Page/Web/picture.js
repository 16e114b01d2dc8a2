// A side of the card with what was recognised on it. One drawing in the units of the picture that was sent, turned
// upright as a whole, so that boxes stay on their letters.

import { api } from "./api.js";
import { el, setText, svg } from "./dom.js";
import { texts } from "./texts.js";

/// To a thousandth of a unit: the sine of a half turn is not quite nothing.
const rounded = (value) => Math.round(value * 1000) / 1000;

/// What is seen of a picture after it is turned clockwise by some degrees about its middle.
export function boundsAfterTurning(width, height, degrees) {
  const angle = (degrees * Math.PI) / 180;
  const sine = Math.abs(Math.sin(angle));
  const cosine = Math.abs(Math.cos(angle));
  const wide = rounded(width * cosine + height * sine);
  const high = rounded(width * sine + height * cosine);
  return { x: (width - wide) / 2, y: (height - high) / 2, width: wide, height: high };
}

export class PictureView {
  element = el("section", { class: "panel picture-panel", "aria-label": texts.pictureTitle });
  #sides = el("div", { class: "segments", role: "group", "aria-label": texts.pictureTitle });
  #stage = el("div", { class: "stage" });
  #remark = el("p", { class: "hint" });
  #boxes = new Map();
  #key = "";
  #side = 0;
  #card = null;
  #handlers;

  /// `handlers`: hover(field or null), choose(field).
  constructor(handlers) {
    this.#handlers = handlers;
    this.element.append(this.#sides, this.#stage, this.#remark);
  }

  show(card) {
    if (this.#card?.id !== card.id) this.#side = 0;
    this.#card = card;
    this.#side = Math.min(this.#side, card.pictures.length - 1);
    const picture = card.pictures[this.#side];
    const fields = (card.fields ?? []).filter((field) => field.side === this.#side && field.frame[2] > 0);
    const key = JSON.stringify([card.id, this.#side, card.pictures, fields.map((field) => [field.id, field.kind, field.frame])]);
    if (key === this.#key) return;
    this.#key = key;
    this.#showSides(card);
    this.#showStage(picture, fields);
    const isFinished = card.state === "done" || card.state === "failed";
    setText(this.#remark, isFinished ? (picture.isRead || card.state === "failed" ? "" : texts.notRead) : texts.sideWaits);
    this.#remark.hidden = this.#remark.textContent === "";
  }

  /// Marks the box of a field and shows the side that it is on; null marks none.
  mark(field) {
    if (field && field.side !== null && field.side !== this.#side && this.#card?.pictures.length > field.side) {
      this.#side = field.side;
      this.show(this.#card);
    }
    for (const [id, box] of this.#boxes) box.classList.toggle("is-marked", id === field?.id);
    this.#stage.classList.toggle("has-mark", this.#boxes.has(field?.id));
  }

  #showSides(card) {
    this.#sides.hidden = card.pictures.length < 2;
    this.#sides.replaceChildren(
      ...card.pictures.map((_, side) =>
        el("button", {
          type: "button",
          class: "segment",
          "aria-pressed": String(side === this.#side),
          text: side === 0 ? texts.front : texts.back,
          onclick: () => {
            this.#side = side;
            this.show(this.#card);
            this.#sides.children[side].focus();
          },
        }),
      ),
    );
  }

  #showStage(picture, fields) {
    const { unitsWide, unitsHigh, turn } = picture;
    const bounds = boundsAfterTurning(unitsWide, unitsHigh, turn);
    const label = texts.pictureLabel(this.#side === 0 ? texts.front : texts.back, fields.length);
    this.#boxes.clear();
    const boxes = fields.map((field) => this.#box(field, unitsWide));
    this.#stage.replaceChildren(
      svg(
        "svg",
        { class: "card-picture", viewBox: `${bounds.x} ${bounds.y} ${bounds.width} ${bounds.height}`, role: "img", "aria-label": label },
        svg(
          "g",
          { transform: `rotate(${turn} ${unitsWide / 2} ${unitsHigh / 2})` },
          svg("image", { href: api.view(picture.id), width: unitsWide, height: unitsHigh, preserveAspectRatio: "none" }),
          ...boxes,
        ),
      ),
    );
  }

  #box(field, unitsWide) {
    const [x, y, width, height] = field.frame;
    const margin = unitsWide / 170;
    const box = svg("rect", {
      class: `box kind-${field.kind}`,
      x: x - margin,
      y: y - margin,
      width: width + 2 * margin,
      height: height + 2 * margin,
      rx: margin,
      "data-field": field.id,
      onpointerenter: () => this.#handlers.hover(field),
      onpointerleave: () => this.#handlers.hover(null),
      onclick: () => this.#handlers.choose(field),
    });
    box.append(svg("title", { text: `${texts.kinds[field.kind]}: ${field.text}` }));
    this.#boxes.set(field.id, box);
    return box;
  }
}
