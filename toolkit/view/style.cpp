// How a page looks and what its script does. The colours are those that people who do not tell red from green
// can tell apart (Okabe and Ito, "Color Universal Design", 2008).
#include "toolkit/view/internal/style.h"

namespace zuna_toolkit {

const std::string_view kPictureStyle = R"css(
:root { color-scheme: light dark; --paper: #fff; --text: #1a1a1a; --muted: #595959; --line: #d0d0d0;
  --note: #0072b2; --drum: #555; --tempo: #a84900; --vamp: #00664b; --repeat: #0072b2; --cut: #8a3b00;
  --click: #6b5a00; --span: #8f3a70; --error: #b00020; --warning: #7a5b00; --plain: #a6a6a6;
  --here: #0064a0; --there: #c04e00; }
@media (prefers-color-scheme: dark) {
  :root { --paper: #16181c; --text: #eee; --muted: #b0b0b0; --line: #3c4048;
    --note: #56b4e9; --drum: #bbb; --tempo: #ff9a4d; --vamp: #3fd0a5; --repeat: #56b4e9; --cut: #ffae70;
    --click: #f0e442; --span: #e79ac6; --error: #ff8a98; --warning: #f0c75e; --plain: #70757d;
    --here: #6cc0f5; --there: #ff9a4d; } }
svg { display: block; font: 12px system-ui, sans-serif; background: var(--paper); }
svg text { fill: var(--text); stroke: var(--paper); stroke-width: 2px; paint-order: stroke; } svg .label { fill: var(--muted); } svg .heading { font-weight: bold; }
.names rect { fill: var(--paper); } .names text { fill: var(--text); }
.bars { fill: none; stroke: var(--line); stroke-width: 1; vector-effect: non-scaling-stroke; }
.bar { fill: transparent; } .bar:hover { fill: var(--note); fill-opacity: .2; }
.tempo { fill: none; stroke: var(--tempo); stroke-width: 2; }
.voice path { fill: none; stroke: var(--note); stroke-width: 2; }
.drums path { stroke: var(--drum); stroke-width: 3; }
.voice .density { fill: var(--note); fill-opacity: .5; stroke: none; } .drums .density { fill: var(--drum); }
.voice .controls { stroke: var(--muted); stroke-width: 1; } .program { font-size: 9px; }
.edit path { fill: none; stroke-width: 2; } .edit rect { fill-opacity: .25; stroke-width: 1; }
.vamp { color: var(--vamp); } .repeat { color: var(--repeat); } .cut { color: var(--cut); }
.click { color: var(--click); } .transpose, .tempo-scale { color: var(--span); }
.marker, .fermata, .caesura { color: var(--text); }
.edit path, .edit rect { stroke: currentColor; } .edit rect, .edit circle { fill: currentColor; }
.cut path { stroke-dasharray: 4 3; } .left-out { fill: var(--paper); fill-opacity: .7; pointer-events: none; }
.marker rect { fill: none; } .fermata rect { stroke: none; fill-opacity: .1; }
.compared { --note: var(--plain); --drum: var(--plain); --tempo: var(--plain); }
.compared .edit { color: var(--muted); } .compared .edit.there { color: var(--there); }
svg .here { color: var(--here); } svg .there { color: var(--there); }
svg text.here, .here text, .names .here { fill: var(--here); font-weight: bold; }
svg text.there, .there text, .names .there { fill: var(--there); font-style: italic; }
.mark { fill: currentColor; } .tempo.there { stroke: var(--there); stroke-dasharray: 6 4; }
.voice path.here { stroke: var(--here); } .voice path.there { stroke: var(--there); }
)css";

const std::string_view kPageStyle = R"css(
body { margin: 0 auto; padding: 1rem; background: var(--paper); color: var(--text);
  font: 16px/1.5 system-ui, sans-serif; }
h1, h2 { line-height: 1.2; overflow-wrap: anywhere; }
dl { display: flex; flex-wrap: wrap; gap: .25rem 1.5rem; margin: .5rem 0; }
dl div { display: flex; gap: .5rem; }
dt { color: var(--muted); } dd { margin: 0; overflow-wrap: anywhere; }
a { color: var(--note); } nav ol { padding: 0; list-style: none; columns: 20rem; column-gap: 2rem; }
nav span { color: var(--muted); }
section { border-top: 1px solid var(--line); margin-top: 1.5rem; }
.tools { display: flex; flex-wrap: wrap; gap: 1rem; align-items: center; }
.findings, .changes ul { margin: .5rem 0; padding-left: 1.2rem; } .error strong { color: var(--error); }
.warning strong { color: var(--warning); } .changes li { overflow-wrap: anywhere; }
.scroll { overflow-x: auto; border: 1px solid var(--line); }
table { border-collapse: collapse; margin: .5rem 0; } th { text-align: left; }
th, td { border-bottom: 1px solid var(--line); padding: .1rem .75rem .1rem 0; vertical-align: top;
  overflow-wrap: anywhere; }
@media print {
  body { padding: 0; font-size: 10pt; } nav, .tools { display: none; }
  section { break-before: page; border: none; } .scroll { overflow: visible; border: none; }
  svg { width: 100%; height: auto; } }
)css";

const std::string_view kPageScript = R"js(
"use strict";
(() => {
  const sections = [...document.querySelectorAll("section[id]")];
  const tools = document.createElement("div");
  tools.className = "tools";
  const labelled = (text, control) => {
    const label = document.createElement("label");
    label.append(text + " ", control);
    tools.append(label);
    return control;
  };
  const choice = labelled("Song", document.createElement("select"));
  choice.id = "choice";
  choice.add(new Option("all", ""));
  for (const section of sections) choice.add(new Option(section.querySelector("h2").textContent, section.id));
  choice.addEventListener("change", () => {
    for (const section of sections) section.hidden = choice.value !== "" && section.id !== choice.value;
  });
  const zoom = labelled("Zoom", document.createElement("input"));
  Object.assign(zoom, {id: "zoom", type: "range", min: "0.25", max: "4", step: "0.25", value: "1"});
  zoom.addEventListener("input", () => {
    for (const svg of document.querySelectorAll("svg")) svg.setAttribute("width", svg.dataset.width * zoom.value);
    for (const scroll of document.querySelectorAll(".scroll")) keepNames(scroll);
  });
  const keepNames = (scroll) => {
    const svg = scroll.querySelector("svg");
    const unit = svg.dataset.width / svg.getAttribute("width");
    scroll.querySelector(".names").setAttribute("transform", `translate(${scroll.scrollLeft * unit} 0)`);
  };
  for (const scroll of document.querySelectorAll(".scroll")) {
    scroll.addEventListener("scroll", () => keepNames(scroll), {passive: true});
  }
  window.addEventListener("beforeprint", () => {
    for (const names of document.querySelectorAll(".names")) names.removeAttribute("transform");
  });
  for (const link of document.querySelectorAll("nav a")) {
    link.addEventListener("click", () => { choice.value = ""; choice.dispatchEvent(new Event("change")); });
  }
  document.querySelector("main").prepend(tools);
})();
)js";

}  // namespace zuna_toolkit
