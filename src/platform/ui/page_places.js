// Names the place that a page stands at by what is read there, and finds it again. Runs in a world of its own; what a
// page's elements could hide behind their names is not asked by name.
(function () {
  'use strict';

  const PASSAGE = 120, LONGEST_PASSAGE = 300, BEFORE = 40, LEAST_PASSAGE = 12;
  const UNREAD = new Set(['head', 'script', 'style', 'title', 'template', 'noscript', 'textarea', 'select']);

  const get = (type, name) => Function.prototype.call.bind(Object.getOwnPropertyDescriptor(type.prototype, name).get);
  const call = (type, name) => Function.prototype.call.bind(type.prototype[name]);
  const [rootOf, scrollingOf] = ['documentElement', 'scrollingElement'].map(name => get(Document, name));
  const [walkerOf, rangeOf, caretAt] = ['createTreeWalker', 'createRange', 'caretRangeFromPoint']
    .map(name => call(Document, name));
  const parentOf = get(Node, 'parentNode'), localName = get(Element, 'localName');

  const scroller = () => scrollingOf(document) || rootOf(document);
  const isText = node => node && node.nodeType === Node.TEXT_NODE;
  const withoutBlanks = text => text.replace(/\s+/g, '');

  function texts(from) {
    const accept = node => isText(node) ? NodeFilter.FILTER_ACCEPT
      : UNREAD.has(localName(node)) ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_SKIP;
    const walker = walkerOf(document, rootOf(document), NodeFilter.SHOW_TEXT | NodeFilter.SHOW_ELEMENT, accept);
    if (from) walker.currentNode = from;
    return walker;
  }

  function blockOf(node) {
    let up = parentOf(node);
    while (up && up.nodeType === Node.ELEMENT_NODE && getComputedStyle(up).display.startsWith('inline')) up = parentOf(up);
    return up;
  }

  // The text from a place on, with a blank between blocks and none before a sign that follows a tag.
  function textFrom(node, offset, length) {
    let text = node.data.slice(offset, offset + 4 * length), block = blockOf(node);
    const walker = texts(node);
    for (let next; text.length < 4 * length && (next = walker.nextNode());) {
      if (!/\S/.test(next.data)) { text += ' '; continue; }
      const nextBlock = blockOf(next);
      text += (nextBlock === block ? '' : ' ') + next.data.slice(0, length);
      block = nextBlock;
      if (next.data.length > length) break;  // what follows the cut is not read
      if (text.replace(/\s+/g, ' ').length > length) break;
    }
    return text.replace(/\s+/g, ' ').trim().slice(0, length);
  }

  function textBefore(node, offset) {
    let text = withoutBlanks(node.data.slice(Math.max(0, offset - 200), offset));
    const walker = texts(node);
    for (let before; text.length < BEFORE && (before = walker.previousNode());)
      text = withoutBlanks(before.data.slice(-200)) + text;
    return text.slice(-BEFORE);
  }

  function lineOf(node, offset) {
    const range = rangeOf(document);
    const at = Math.min(offset, Math.max(0, node.data.length - 1));
    range.setStart(node, at);
    range.setEnd(node, Math.min(at + 1, node.data.length));
    const lines = range.getClientRects();
    return lines.length ? lines[0] : range.getBoundingClientRect();
  }

  // The first text at or below the upper edge of the view.
  function uppermost() {
    for (let y = 2; y < innerHeight; y += 6)
      for (const x of [0.15, 0.4, 0.65]) {
        const caret = caretAt(document, innerWidth * x, y);
        if (!caret || !isText(caret.startContainer)) continue;
        const node = caret.startContainer;
        const offset = caret.startOffset;
        if (!/\S/.test(node.data.slice(offset)) && !/\S/.test(node.data)) continue;
        const line = lineOf(node, offset);
        if (line.height > 0 && line.bottom > 1 && line.top < innerHeight) return {node, offset, line};
      }
    return null;
  }

  const shareOf = pixels => scroller().scrollHeight > 0 ? Math.max(0, pixels) / scroller().scrollHeight : 0;

  function placeAt(node, offset, line, length) {
    const page = scroller();
    return {
      atTop: page.scrollTop < 1,
      passage: textFrom(node, offset, length),
      before: textBefore(node, offset),
      share: shareOf(page.scrollTop + line.top),
      gap: line.height > 0 ? line.top / line.height : 0,
    };
  }

  function atTopEdge() {
    const first = uppermost();
    const page = scroller();
    if (!first) return {atTop: page.scrollTop < 1, share: shareOf(page.scrollTop)};
    // Whole words.
    let offset = first.offset;
    while (offset > 0 && /\S/.test(first.node.data[offset - 1]) && first.offset - offset < 40) --offset;
    const place = placeAt(first.node, offset, lineOf(first.node, offset), PASSAGE);
    if (place.passage.length === PASSAGE) place.passage = place.passage.replace(/\s+\S*$/, '');
    return place;
  }

  function ofSelection() {
    const selection = getSelection();
    if (!selection.rangeCount || selection.isCollapsed) return null;
    const range = selection.getRangeAt(0);
    let node = range.startContainer, offset = range.startOffset;
    if (!isText(node)) {
      const walker = texts(node.childNodes[offset] || node);
      node = isText(walker.currentNode) ? walker.currentNode : walker.nextNode();
      offset = 0;
    }
    while (node && !/\S/.test(node.data.slice(offset))) {
      node = texts(node).nextNode();
      offset = 0;
    }
    if (!node) return null;
    offset += node.data.slice(offset).search(/\S/);
    const selected = selection.toString().replace(/\s+/g, ' ').trim().length;
    if (!selected) return null;
    const place = placeAt(node, offset, lineOf(node, offset), Math.min(selected, LONGEST_PASSAGE));
    place.atTop = false;
    return place;
  }

  // ---- Finding ----

  // All text of the page without blanks, and which of its characters come from which node.
  function readable() {
    const nodes = [], starts = [], parts = [];
    let length = 0;
    const walker = texts();
    for (let node; (node = walker.nextNode());) {
      const text = withoutBlanks(node.data);
      if (!text) continue;
      nodes.push(node);
      starts.push(length);
      parts.push(text);
      length += text.length;
    }
    return {nodes, starts, text: parts.join('')};
  }

  function pointAt(page, index) {
    let low = 0, high = page.starts.length - 1;
    while (low < high) {
      const middle = (low + high + 1) >> 1;
      if (page.starts[middle] <= index) low = middle; else high = middle - 1;
    }
    const node = page.nodes[low];
    let left = index - page.starts[low], offset = 0;
    for (; offset < node.data.length; ++offset)
      if (!/\s/.test(node.data[offset]) && left-- === 0) break;
    return {node, offset};
  }

  function nearest(text, words, share) {
    let best = -1;
    for (let at = text.indexOf(words), tries = 0; at >= 0 && tries < 10000; at = text.indexOf(words, at + 1), ++tries)
      if (best < 0 || Math.abs(at - share * text.length) < Math.abs(best - share * text.length)) best = at;
    return best;
  }

  function find(page, place) {
    const passage = withoutBlanks(place.passage);
    if (!passage) return null;
    const half = passage.length >> 1;
    const ways = [[place.before, passage], ['', passage]];
    if (half >= LEAST_PASSAGE) ways.push(['', passage.slice(0, half)], ['', passage.slice(half)]);
    for (const [before, words] of ways) {
      const at = nearest(page.text, before + words, place.share);
      if (at >= 0) return {from: at + before.length, to: at + before.length + words.length - 1};
    }
    return null;
  }

  // Answers whether the passage was found.
  function goTo(place, select) {
    const view = scroller();
    if (place.atTop && !select) {
      view.scrollTop = 0;
      return true;
    }
    const page = readable();
    const found = find(page, place);
    if (!found) {
      view.scrollTop = place.atTop ? 0 : place.share * view.scrollHeight;
      return false;
    }
    const start = pointAt(page, found.from);
    // What is out of sight has no place of its own yet, and moves others when it gets one.
    for (let tries = 0; tries < 4; ++tries) {
      const line = lineOf(start.node, start.offset);
      const off = line.top - (select ? Math.min(120, innerHeight / 4) : place.gap * line.height);
      const before = view.scrollTop;
      view.scrollTop += off;
      if (Math.abs(view.scrollTop - before) < 1) break;
    }
    if (select) {
      const end = pointAt(page, found.to);
      getSelection().setBaseAndExtent(start.node, start.offset, end.node, Math.min(end.offset + 1, end.node.data.length));
    }
    return true;
  }

  window.lirovanPlaces = {
    atTopEdge: () => JSON.stringify(atTopEdge()),
    ofSelection: () => { const place = ofSelection(); return place && JSON.stringify(place); },
    goTo,
  };
})();
