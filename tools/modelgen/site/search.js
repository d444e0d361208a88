// SPDX-License-Identifier: MIT
// Finds nodes by words of their name, path, unit, command or meaning. entries.js has the nodes:
// [name, path, unit, command, meaning, address].
"use strict";

// How well an entry fits one word; 0 when it does not. Capitals of a command are its short form.
function fits(entry, word) {
  const [name, path, unit, command, meaning] = entry.map((text) => text.toLowerCase());
  const short = entry[3].replace(/[a-z]/g, "").toLowerCase();
  if (name === word || short === word || command === word) return 100;
  if (unit === word) return 40;
  if (name.startsWith(word)) return 60;
  if (name.includes(word)) return 30;
  if ([path, command, short].some((text) => text.includes(word))) return 10;
  return meaning.includes(word) ? 5 : 0;
}

// The entries that fit all words, best first, then in the order of the tree.
function search(entries, text) {
  const words = text.toLowerCase().split(/\s+/).filter((word) => word !== "");
  if (words.length === 0) return [];
  const found = [];
  entries.forEach((entry, place) => {
    const marks = words.map((word) => fits(entry, word));
    if (marks.every((mark) => mark > 0)) {
      found.push({ entry, place, mark: marks.reduce((sum, mark) => sum + mark) });
    }
  });
  found.sort((a, b) => b.mark - a.mark || a.place - b.place);
  return found.map((hit) => hit.entry);
}

function show(found, list, status) {
  const most = 100;
  list.replaceChildren(...found.slice(0, most).map(([name, path, unit, , meaning, address]) => {
    const item = document.createElement("li");
    const link = document.createElement("a");
    link.href = address;
    link.textContent = path === "" ? name : path;
    const about = document.createElement("div");
    about.textContent = unit === "" ? meaning : `${meaning} (${unit})`;
    item.append(link, about);
    return item;
  }));
  const more = found.length > most ? `, the best ${most} are shown` : "";
  status.textContent = found.length === 1 ? "1 node" : `${found.length} nodes${more}`;
}

function start() {
  const field = document.getElementById("search");
  const list = document.getElementById("results");
  const status = document.getElementById("status");
  const functions = document.getElementById("functions");
  const update = () => {
    const isEmpty = field.value.trim() === "";
    functions.hidden = !isEmpty;
    if (isEmpty) {
      list.replaceChildren();
      status.textContent = "";
    } else {
      show(search(window.entries, field.value), list, status);
    }
  };
  field.value = new URLSearchParams(window.location.search).get("q") ?? "";
  field.addEventListener("input", update);
  field.form.addEventListener("submit", (event) => { event.preventDefault(); update(); });
  update();
}

if (typeof document !== "undefined") start();
if (typeof module !== "undefined") module.exports = { search };
