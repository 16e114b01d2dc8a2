// Elements made by script. Text goes in as text, never as markup: what a card says cannot become part of the page.

const svgNamespace = "http://www.w3.org/2000/svg";

function fill(element, properties, children) {
  for (const [name, value] of Object.entries(properties ?? {})) {
    if (value === undefined || value === null || value === false) continue;
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
    else if (name === "text") element.textContent = value;
    else element.setAttribute(name, value === true ? "" : String(value));
  }
  element.append(...children.filter((child) => child !== null && child !== undefined));
  return element;
}

export function el(tag, properties, ...children) {
  return fill(document.createElement(tag), properties, children);
}

export function svg(tag, properties, ...children) {
  return fill(document.createElementNS(svgNamespace, tag), properties, children);
}

const icons = {
  plus: "M12 5v14M5 12h14",
  download: "M12 4v11m0 0 4.500-4.500M12 15l-4.500-4.500M5 19.500h14",
  close: "M6 6l12 12M18 6 6 18",
  book: "M6 4h11a1.500 1.500 0 0 1 1.500 1.500v14H7.500A1.500 1.500 0 0 1 6 18zm0 13.500A1.500 1.500 0 0 1 7.500 16h11M10 8h5",
  again: "M19 12a7 7 0 1 1-2.200-5.100M19 4v4h-4",
  trash: "M5 7h14M10 7V4.500h4V7M7 7l.8 12.500h8.400L17 7",
  swap: "M7 8h11m0 0-3.500-3.500M18 8l-3.500 3.500M17 16H6m0 0 3.500-3.500M6 16l3.500 3.500",
  split: "M4 6h7v12H4zM15 6h5M15 12h5M15 18h5",
  pair: "M9 15l6-6M10.500 7l1.500-1.500a3.800 3.800 0 0 1 5.500 5.500L16 12.500M13.500 17 12 18.500A3.800 3.800 0 0 1 6.500 13L8 11.500",
  check: "M5 12.500l4.500 4.500L19 7.500",
  alert: "M12 4 2.800 19.500h18.400zM12 10v4.500M12 17v.1",
};

export function icon(name) {
  return svg("svg", { viewBox: "0 0 24 24", class: "icon", "aria-hidden": "true" }, svg("path", { d: icons[name] }));
}

export function button(label, iconName, properties) {
  const { iconOnly, class: className, ...others } = properties ?? {};
  return el(
    "button",
    { type: "button", class: `button ${className ?? ""}`, "aria-label": iconOnly ? label : null, title: iconOnly ? label : null, ...others },
    iconName ? icon(iconName) : null,
    iconOnly ? null : el("span", { text: label }),
  );
}

export function setText(element, text) {
  if (element.textContent !== text) element.textContent = text;
}
