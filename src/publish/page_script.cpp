#include "publish/page_parts.h"

namespace tarvendo {

// What the page can do beyond being read: sort the standings, go through a cross table with the
// arrow keys, load itself anew (which can be switched off), and look the same after that: what is
// to stay is kept with the page's place in the browser's history, for browsers lose the storage of
// a page from a file between two loads. Whoever changes it makes kPageScriptHash anew:
// tests/publish/script_hash.py tells it.
const char* const kPageScript = R"js(
(function () {
  'use strict';
  var kept = history.state || {};
  function keep(name, value) {
    kept[name] = value;
    history.replaceState(kept, '');
  }
  addEventListener('hashchange', function () { history.replaceState(kept, ''); });

  function valueOf(cell) {
    if (!cell || cell.classList.contains('none')) return null;
    if (cell.dataset.v !== undefined) return Number(cell.dataset.v);
    var text = cell.textContent.trim();
    return text !== '' && isFinite(text) ? Number(text) : text;
  }
  function compare(a, b, sign) {
    if (a === null || b === null) return (a === null) - (b === null);
    if (typeof a === 'number' && typeof b === 'number') return sign * (a - b);
    return sign * String(a).localeCompare(String(b), undefined, {numeric: true});
  }
  function sort(table, column, ascending) {
    var body = table.tBodies[0];
    var rows = Array.prototype.slice.call(body.rows).map(function (row, place) {
      return {row: row, place: place, value: valueOf(row.cells[column]), bye: row.className === 'bye'};
    });
    rows.sort(function (a, b) {
      return a.bye - b.bye || compare(a.value, b.value, ascending ? 1 : -1) || a.place - b.place;
    });
    rows.forEach(function (entry) { body.appendChild(entry.row); });
    Array.prototype.forEach.call(table.tHead.rows[0].cells, function (cell, place) {
      if (place === column) cell.setAttribute('aria-sort', ascending ? 'ascending' : 'descending');
      else cell.removeAttribute('aria-sort');
    });
  }
  Array.prototype.forEach.call(document.querySelectorAll('table.sorts'), function (table) {
    Array.prototype.forEach.call(table.tHead.rows[0].cells, function (cell, column) {
      var button = document.createElement('button');
      button.type = 'button';
      while (cell.firstChild) button.appendChild(cell.firstChild);
      cell.appendChild(button);
      button.addEventListener('click', function () {
        var now = cell.getAttribute('aria-sort');
        var ascending = now ? now === 'descending' : cell.dataset.up !== undefined;
        sort(table, column, ascending);
        keep('sort', [column, ascending]);
      });
    });
    if (kept.sort) sort(table, kept.sort[0], kept.sort[1]);
    else table.tHead.rows[0].cells[0].setAttribute('aria-sort', 'ascending');
  });

  Array.prototype.forEach.call(document.querySelectorAll('table.cross'), function (table) {
    var cells = table.querySelectorAll('td[data-r]');
    Array.prototype.forEach.call(cells, function (cell, place) { cell.tabIndex = place === 0 ? 0 : -1; });
    table.addEventListener('keydown', function (event) {
      var cell = event.target.closest('td[data-r]');
      var step = {ArrowLeft: [0, -1], ArrowRight: [0, 1], ArrowUp: [-1, 0], ArrowDown: [1, 0]}[event.key];
      if (!cell || !step) return;
      event.preventDefault();
      var row = cell.parentNode.rowIndex, column = cell.cellIndex, next = null;
      do {
        row += step[0];
        column += step[1];
        if (!table.rows[row] || !table.rows[row].cells[column]) return;
        next = table.rows[row].cells[column];
      } while (next.dataset.r === undefined);
      cell.tabIndex = -1;
      next.tabIndex = 0;
      next.focus();
    });
  });

  var folds = document.querySelectorAll('details');
  Array.prototype.forEach.call(folds, function (fold, place) {
    var name = fold.id || 'fold' + place;
    if (kept[name] !== undefined) fold.open = kept[name];
    fold.querySelector('summary').addEventListener('click', function () { keep(name, !fold.open); });
  });
  addEventListener('beforeprint', function () {
    Array.prototype.forEach.call(folds, function (fold) { if (fold.id) fold.open = true; });
  });

  var live = document.querySelector('.live');
  if (live) {
    var label = document.createElement('label');
    var box = document.createElement('input');
    box.type = 'checkbox';
    box.checked = kept.live !== false;
    label.appendChild(box);
    label.appendChild(document.createTextNode('load anew'));
    live.appendChild(label);
    box.addEventListener('change', function () { keep('live', box.checked); });
    setInterval(function () {
      if (box.checked && !document.hidden) location.reload();
    }, 1000 * Number(live.dataset.seconds));
  }
})();
)js";

const char* const kPageScriptHash = "azw6P5nsUf86+A8JBPicynlx8Rm4/n8iCO7ZMQtwQyo=";

}  // namespace tarvendo
