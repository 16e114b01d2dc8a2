// What stands there as long as there is no card.

import { button, el, svg } from "./dom.js";
import { texts } from "./texts.js";

function drawing() {
  const line = (x, y, width, className) => svg("rect", { x, y, width, height: 7, rx: 3.5, class: className });
  return svg("svg", { viewBox: "0 0 300 150", class: "drawing", "aria-hidden": "true" },
    svg("g", { transform: "rotate(-5 100 80)" },
      svg("rect", { x: 20, y: 26, width: 170, height: 100, rx: 10, class: "drawing-card" }),
      line(38, 46, 84, "drawing-name"), line(38, 61, 60, "drawing-title"),
      line(38, 88, 104, "drawing-mail"), line(38, 103, 74, "drawing-phone")),
    svg("path", { d: "M200 76h30m0 0-9-9m9 9-9 9", class: "drawing-arrow" }),
    svg("g", {}, svg("rect", { x: 242, y: 38, width: 50, height: 76, rx: 8, class: "drawing-card" }),
      svg("circle", { cx: 267, cy: 58, r: 9, class: "drawing-name" }),
      line(251, 76, 32, "drawing-title"), line(251, 88, 32, "drawing-mail"), line(251, 100, 20, "drawing-phone")));
}

/// `handlers`: choose(), sample(), and `where`, the element that says where pictures are read.
export function makeWelcome(handlers) {
  return el("main", { class: "welcome" },
    drawing(),
    el("h1", { text: texts.emptyTitle }),
    el("p", { class: "lead" }, el("span", { text: `${texts.emptyLead} ` }), handlers.where),
    el("div", { class: "buttons" },
      button(texts.choose, "plus", { class: "button-main button-large", onclick: handlers.choose }),
      button(texts.sample, null, { class: "button-large", onclick: handlers.sample })),
    el("ol", { class: "steps" },
      ...texts.emptySteps.map(([name, what]) => el("li", {}, el("strong", { text: name }), el("span", { text: what })))));
}
