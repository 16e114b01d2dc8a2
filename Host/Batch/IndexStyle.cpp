#include "Batch/IndexStyle.h"

#include "QVPlatform/Base64.h"
#include "QVPlatform/SHA256.h"

#include <cstddef>

namespace qvhost::IndexStyle {
namespace {

constexpr std::string_view kBeforePolicy = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
)";

constexpr std::string_view kAfterPolicy = R"(<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="referrer" content="no-referrer">
<meta name="color-scheme" content="light dark">
<title>Business cards</title>
<style>
:root { color-scheme: light dark; --ground: #f1f2f4; --paper: #fff; --ink: #1d2126; --soft: #59616b; --line: #d9dde2;
  --link: #1a5fb4; --bad: #a51d2d; }
@media (prefers-color-scheme: dark) { :root { --ground: #15181b; --paper: #1f2327; --ink: #e6e8ea; --soft: #a3abb4;
  --line: #363c43; --link: #8ab8f5; --bad: #ff8f8f; } }
* { box-sizing: border-box; }
html { background: var(--ground); color: var(--ink); font: 16px/1.45 system-ui, sans-serif; }
body { margin: 0 auto; max-width: 1240px; padding: 16px; }
a { color: var(--link); }
header { display: flex; flex-wrap: wrap; gap: 4px 24px; align-items: baseline; margin-bottom: 16px; }
header p { margin: 0; color: var(--soft); }
header label { margin-left: auto; color: var(--soft); }
h1 { font-size: 1.5rem; margin: 0; }
h2 { font-size: 1.15rem; margin: 0 0 8px; overflow-wrap: anywhere; }
input { font: inherit; color: inherit; background: var(--paper); border: 1px solid var(--soft); border-radius: 6px;
  padding: 4px 8px; width: 16em; max-width: 100%; }
article, .failed { background: var(--paper); border: 1px solid var(--line); border-radius: 10px; padding: 16px;
  margin: 0 0 16px; }
article { display: grid; grid-template-columns: 240px minmax(0, 1fr); gap: 16px 24px; content-visibility: auto;
  contain-intrinsic-size: auto 300px; }
article[hidden] { display: none; }
.pictures { display: grid; gap: 8px; align-content: start; }
.pictures img { border-radius: 4px; display: block; max-width: none; }
.pictures .card-picture { border-radius: 4px; }
dl { display: grid; grid-template-columns: max-content minmax(0, 1fr); gap: 2px 16px; margin: 0 0 8px; }
dt { grid-column: 1; color: var(--soft); }
dd { grid-column: 2; margin: 0; overflow-wrap: anywhere; white-space: pre-line; }
details { margin: 8px 0; }
summary { cursor: pointer; width: max-content; max-width: 100%; }
.note { margin-top: 8px; border: 1px solid var(--line); border-radius: 12px; overflow-x: auto; }
.note img { max-width: 100%; }
.note .card-picture img { max-width: none; }
.problem, .failed summary { color: var(--bad); }
.problem, .remark { margin: 4px 0; overflow-wrap: anywhere; }
.remark, .links { color: var(--soft); }
.links { margin: 8px 0 0; font-size: 0.9rem; overflow-wrap: anywhere; }
.links a { margin-right: 12px; }
.failed ul { margin: 8px 0 0; padding-left: 1.2em; overflow-wrap: anywhere; }
:focus-visible { outline: 2px solid var(--link); outline-offset: 2px; }
@media (max-width: 640px) { body { padding: 12px; } article { grid-template-columns: minmax(0, 1fr); }
  header label { margin-left: 0; width: 100%; } input { width: 100%; } .pictures { max-width: 320px; } }
@media print { html { background: none; } header label { display: none; } article { break-inside: avoid; } }
</style>
</head>
<body>
)";

constexpr std::string_view kScript = R"(
"use strict";
const cards = [...document.querySelectorAll("article")];
const texts = cards.map((card) => card.querySelector(".what").textContent.toLowerCase());
const shown = document.getElementById("shown");
const all = shown.textContent;
const filter = document.getElementById("filter");
const show = () => {
  const words = filter.value.toLowerCase().split(/\s+/).filter(Boolean);
  let count = 0;
  cards.forEach((card, i) => {
    card.hidden = !words.every((word) => texts[i].includes(word));
    count += card.hidden ? 0 : 1;
  });
  shown.textContent = words.length ? count + " of " + all : all;
};
filter.addEventListener("input", show);
shown.setAttribute("role", "status");
document.getElementById("search").hidden = false;
show();
)";

int valueOf(char digit) {
    return digit >= 'a' ? digit - 'a' + 10 : digit - '0';
}

std::string digestOfScript() {
    const std::string digits = qv::lowerHexSHA256(kScript);
    qv::Data bytes;
    bytes.reserve(digits.size() / 2);
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes.push_back(static_cast<qv::Data::value_type>(valueOf(digits[i]) * 16 + valueOf(digits[i + 1])));
    return qv::base64(bytes);
}

}  // namespace

std::string_view beforePolicy() {
    return kBeforePolicy;
}

std::string policy() {
    return "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src 'self' file: data:; "
           "style-src 'unsafe-inline'; script-src 'sha256-" +
           digestOfScript() + "'; base-uri 'none'; form-action 'none'\">\n";
}

std::string_view afterPolicy() {
    return kAfterPolicy;
}

std::string tail() {
    return "</main>\n<script>" + std::string(kScript) + "</script>\n</body>\n</html>\n";
}

}  // namespace qvhost::IndexStyle
