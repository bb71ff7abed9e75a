#include "publish/page_looks.h"

namespace norvelis::publish {

const std::string_view kStyle = R"css(
:root { --ink: #1c2430; --soft: #566070; --line: #d3d9e1; --panel: #f3f5f8; --link: #0a4f9e; --mark: #ffe9a8; }
* { box-sizing: border-box; }
html { scroll-padding-top: 1rem; }
body { margin: 0; color: var(--ink); background: #fff; font: 15px/1.45 system-ui, "Segoe UI", "Liberation Sans", sans-serif; }
a { color: var(--link); text-decoration-thickness: 1px; text-underline-offset: 2px; }
a:focus-visible, input:focus-visible, summary:focus-visible { outline: 3px solid var(--link); outline-offset: 2px; }
.skip { position: absolute; left: -999px; }
.skip:focus { left: 1rem; top: 1rem; padding: .5rem 1rem; background: #fff; }
header { padding: 1.2rem 1.5rem; background: var(--ink); color: #fff; }
h1 { margin: 0; font-size: 1.7rem; overflow-wrap: anywhere; }
header p { margin: .3rem 0 0; color: #d5dce6; }
.columns { display: grid; grid-template-columns: minmax(0, 1fr); }
nav { padding: 1rem 1.5rem; background: var(--panel); border-bottom: 1px solid var(--line); }
nav ul { margin: 0 0 1rem; padding: 0; list-style: none; }
nav li { padding: .12rem 0; overflow-wrap: anywhere; }
nav small { display: block; color: var(--soft); }
#section-list { display: flex; flex-wrap: wrap; gap: 0 1.2rem; }
#record-list { columns: 14rem; max-height: 40vh; overflow-y: auto; }
#search { width: 100%; padding: .45rem .6rem; font: inherit; border: 1px solid var(--soft); border-radius: 4px; }
#found { min-height: 1.4em; margin: .2rem 0 .6rem; color: var(--soft); }
main { padding: 0 1.5rem 2rem; min-width: 0; }
h2 { margin: 2rem 0 .6rem; padding-bottom: .25rem; border-bottom: 2px solid var(--ink); font-size: 1.35rem; }
h3 { margin: 0 0 .5rem; font-size: 1.15rem; overflow-wrap: anywhere; }
h4 { margin: 1rem 0 .3rem; font-size: 1rem; }
.part { padding: 1rem 0; border-top: 1px solid var(--line); content-visibility: auto; contain-intrinsic-size: auto 40rem; }
.part:first-of-type { border-top: 0; }
:target > h3, tr:target { background: var(--mark); }
dl { display: grid; grid-template-columns: repeat(auto-fill, minmax(11rem, 1fr)); gap: .4rem 1rem; margin: 0 0 .6rem; }
dt { color: var(--soft); font-size: .85rem; }
dd { margin: 0; overflow-wrap: anywhere; }
.wide { overflow-x: auto; }
table { border-collapse: collapse; min-width: 60%; }
th, td { padding: .22rem .7rem .22rem 0; text-align: left; vertical-align: top; border-bottom: 1px solid var(--line); }
th { color: var(--soft); font-size: .85rem; font-weight: 600; }
.f, .p, pre { font-family: ui-monospace, "Liberation Mono", Consolas, monospace; font-size: .9rem; }
.f, .p, .b { white-space: pre; }
.d1 { padding-left: 1.2rem; } .d2 { padding-left: 2.4rem; } .d3 { padding-left: 3.6rem; } .d4 { padding-left: 4.8rem; }
.warning { font-weight: 600; }
pre { overflow-x: auto; padding: .6rem; background: var(--panel); }
.canvas { max-height: 80vh; overflow: auto; border: 1px solid var(--line); background: #fff; }
.canvas svg { display: none; width: 100%; max-width: var(--wide); height: auto; }
.figure:has(#zoom-25:checked) svg { width: calc(var(--wide) * .25); max-width: none; }
.figure:has(#zoom-50:checked) svg { width: calc(var(--wide) * .5); max-width: none; }
.figure:has(#zoom-100:checked) svg { width: var(--wide); max-width: none; }
.figure:has(#zoom-200:checked) svg { width: calc(var(--wide) * 2); max-width: none; }
.canvas a:hover path, .canvas a:focus path { stroke: #b33d00; stroke-width: 2; }
.canvas g:target path { stroke: #b33d00; stroke-width: 4; }
fieldset { display: flex; flex-wrap: wrap; gap: .2rem 1rem; margin: 0 0 .6rem; padding: 0; border: 0; }
legend { float: left; margin-right: 1rem; color: var(--soft); }
footer { padding: 1rem 1.5rem; color: var(--soft); border-top: 1px solid var(--line); }
@media (min-width: 60rem) {
  .columns { grid-template-columns: 17rem minmax(0, 1fr); }
  nav { position: sticky; top: 0; height: 100vh; overflow-y: auto; border-bottom: 0; border-right: 1px solid var(--line); }
  #section-list { display: block; }
  #record-list { columns: auto; max-height: none; overflow-y: visible; }
}
@media print {
  body { font-size: 9.5pt; }
  header { background: none; color: #000; padding: 0; }
  header p { color: #000; }
  nav, fieldset, details, .skip, .to-drawing { display: none; }
  .columns { display: block; }
  main { padding: 0; }
  a { color: inherit; text-decoration: none; }
  .canvas { max-height: none; overflow: visible; border: 0; }
  .figure .canvas svg { width: 100% !important; max-width: 100% !important; max-height: 24cm; }
  .part { content-visibility: visible; }
  h2, h3, h4 { break-after: avoid; }
  tr, dl { break-inside: avoid; }
  thead { display: table-header-group; }
}
)css";

const std::string_view kLastStyle = ".canvas svg { display: block; }";

const std::string_view kScript = R"js(
(function () {
  'use strict';

  // The list shows the records whose name, fields, sets or indexes hold the text.
  var search = document.getElementById('search');
  var found = document.getElementById('found');
  var items = Array.from(document.querySelectorAll('#record-list li'), function (line) {
    var link = line.querySelector('a');
    var note = document.createElement('small');
    line.appendChild(note);
    return { line: line, link: link, note: note, name: link.textContent.toUpperCase(), names: null };
  });

  function namesIn(item) {
    if (!item.names) {
      var part = document.getElementById(item.link.hash.slice(1));
      var all = Array.from(part.querySelectorAll('.f, .s a'), function (name) { return name.textContent; });
      item.names = Array.from(new Set(all));
    }
    return item.names;
  }

  function show() {
    var wanted = search.value.trim().toUpperCase();
    var count = 0;
    items.forEach(function (item) {
      var isNamed = item.name.includes(wanted);
      var hits = wanted === '' || isNamed ? [] : namesIn(item).filter(function (name) {
        return name.toUpperCase().includes(wanted);
      });
      var isShown = isNamed || hits.length > 0;
      item.line.hidden = !isShown;
      item.note.textContent = hits.slice(0, 4).join(', ') + (hits.length > 4 ? ', …' : '');
      count += isShown ? 1 : 0;
    });
    found.textContent = wanted === '' ? '' : count + ' of ' + items.length + ' records';
  }

  document.getElementById('search-form').hidden = false;
  search.addEventListener('input', show);
  document.getElementById('search-form').addEventListener('submit', function (event) {
    event.preventDefault();
    var first = items.find(function (item) { return !item.line.hidden; });
    if (first) first.link.click();
  });
  show();

  // The drawing is dragged with the mouse, and the wheel zooms with Ctrl.
  var canvas = document.querySelector('.canvas');
  if (!canvas) return;
  var drawing = canvas.querySelector('svg');
  var grip = null;
  canvas.addEventListener('mousedown', function (event) {
    if (event.button !== 0) return;
    grip = { x: event.clientX, y: event.clientY, left: canvas.scrollLeft, top: canvas.scrollTop, moved: false };
  });
  window.addEventListener('mousemove', function (event) {
    if (!grip) return;
    var x = event.clientX - grip.x, y = event.clientY - grip.y;
    grip.moved = grip.moved || Math.abs(x) + Math.abs(y) > 4;
    canvas.scrollLeft = grip.left - x;
    canvas.scrollTop = grip.top - y;
  });
  window.addEventListener('mouseup', function () {
    var moved = grip !== null && grip.moved;
    grip = null;
    if (!moved) return;
    var stop = function (event) { event.preventDefault(); event.stopPropagation(); };
    canvas.addEventListener('click', stop, { capture: true, once: true });
    setTimeout(function () { canvas.removeEventListener('click', stop, { capture: true }); }, 0);
  });
  canvas.addEventListener('dragstart', function (event) { event.preventDefault(); });
  canvas.addEventListener('wheel', function (event) {
    if (!event.ctrlKey) return;
    event.preventDefault();
    var box = canvas.getBoundingClientRect();
    var x = event.clientX - box.left, y = event.clientY - box.top;
    var before = drawing.clientWidth || drawing.getBoundingClientRect().width;
    var wide = Math.min(Math.max(before * (event.deltaY > 0 ? 0.8 : 1.25), 100), 60000);
    drawing.style.width = wide + 'px';
    drawing.style.maxWidth = 'none';
    canvas.scrollLeft = (canvas.scrollLeft + x) * wide / before - x;
    canvas.scrollTop = (canvas.scrollTop + y) * wide / before - y;
  }, { passive: false });

  // A box that one is led to is to be read: in a large drawing as wide as the page it would be a dot.
  function showBox() {
    var box = location.hash.startsWith('#box-') ? document.getElementById(location.hash.slice(1)) : null;
    if (!box) return;
    if (box.getBoundingClientRect().width < 80) {
      document.getElementById('zoom-100').checked = true;
      drawing.style.width = drawing.style.maxWidth = '';
    }
    box.scrollIntoView({ block: 'center', inline: 'center' });
  }
  window.addEventListener('hashchange', showBox);
  showBox();

  document.querySelectorAll('input[name=zoom]').forEach(function (choice) {
    choice.addEventListener('change', function () { drawing.style.width = drawing.style.maxWidth = ''; });
  });
}());
)js";

}  // namespace norvelis::publish
