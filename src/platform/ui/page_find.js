// Finding on the page: hands the page's text out piece by piece and marks ranges of it. The marks are highlights of
// the engine, beside the page: its elements and what is copied or printed stay as they are.
(function () {
  'use strict';

  const PIECE = 200000;
  // So many are marked in front of what is seen and behind it: each costs time with every painting.
  const AROUND = 1500;
  // No text goes on from one of these to what is around it.
  const BLOCKS = new Set(('address article aside blockquote body caption center dd details dir div dl dt fieldset figure ' +
    'footer form h1 h2 h3 h4 h5 h6 header hr html li listing main menu nav ol p pre section summary table tbody td tfoot th ' +
    'thead tr ul xmp').split(' '));
  const UNREAD = new Set(['head', 'script', 'style', 'title', 'template', 'noscript', 'textarea', 'select', 'option', 'iframe']);
  const BREAK = '\u0001';

  const get = (type, name) => Function.prototype.call.bind(Object.getOwnPropertyDescriptor(type.prototype, name).get);
  const call = (type, name) => Function.prototype.call.bind(type.prototype[name]);
  const [rootOf, scrollingOf, adopted] =
    ['documentElement', 'scrollingElement', 'adoptedStyleSheets'].map(name => get(Document, name));
  const [walkerOf, rangeOf] = ['createTreeWalker', 'createRange'].map(name => call(Document, name));
  const parentOf = get(Node, 'parentNode'), localName = get(Element, 'localName');
  const hasAttribute = call(Element, 'hasAttribute');

  const [all, current] = [new Highlight(), new Highlight()];
  current.priority = 1;
  CSS.highlights.set('lirovan-bulunan', all);
  CSS.highlights.set('lirovan-simdiki', current);
  const sheet = new CSSStyleSheet();
  sheet.replaceSync('@media screen{::highlight(lirovan-bulunan){background-color:#ffe08a;color:#000000}' +
    '::highlight(lirovan-simdiki){background-color:#b3420a;color:#ffffff}}');
  document.adoptedStyleSheets = [...adopted(document), sheet];

  let walker = null, pending = null, pieces = [], ranges = [], chosen = -1, from = 0;
  let middle = 0, isDue = false;  // of the marks around what is seen

  function clear() {
    all.clear();
    current.clear();
    walker = pending = null;
    pieces = [];
    ranges = [];
    chosen = -1;
    middle = 0;
  }

  function begin() {
    clear();
    const accept = node => node.nodeType === Node.TEXT_NODE ? NodeFilter.FILTER_ACCEPT
      : UNREAD.has(localName(node)) || (hasAttribute(node, 'id') && getComputedStyle(node).display === 'none')
        ? NodeFilter.FILTER_REJECT
        : localName(node) === 'br' ? NodeFilter.FILTER_ACCEPT : NodeFilter.FILTER_SKIP;
    walker = walkerOf(document, rootOf(document), NodeFilter.SHOW_TEXT | NodeFilter.SHOW_ELEMENT, accept);
  }

  function blockOf(node) {
    let up = parentOf(node);
    while (up && up.nodeType === Node.ELEMENT_NODE && !BLOCKS.has(localName(up))) up = parentOf(up);
    return up;
  }

  // The next piece of text, up to a break; null where there is no more. A paragraph longer than a piece goes on in the
  // next one, which then begins with its last text again: `again` units.
  function more() {
    if (!walker) return null;
    const nodes = [], starts = [], texts = [];
    let length = 0, block = null, again = 0;
    const add = (node, data) => {
      nodes.push(node);
      starts.push(length);
      texts.push(data);
      length += data.length;
    };
    if (pending) {
      add(pending, pending.data);
      block = blockOf(pending);
      again = length;
      pending = null;
    }
    let node;
    while ((node = walker.nextNode())) {
      if (node.nodeType !== Node.TEXT_NODE) {
        add(null, BREAK);
        if (length < PIECE) continue;
        break;
      }
      const own = blockOf(node);
      if (own !== block) {
        add(null, BREAK);
        block = own;
        if (length >= PIECE) {
          walker.previousNode();
          break;
        }
      }
      add(node, node.data);
      if (length > 2 * PIECE) {
        pending = node;
        break;
      }
    }
    if (!node) walker = null;
    pieces.push({nodes, starts});
    return {text: texts.join(''), again, isLast: !node};
  }

  function mark(piece, places) {
    const {nodes, starts} = pieces[piece];
    let at = 0;
    const point = (offset, isEnd) => {
      while (at + 1 < starts.length && (isEnd ? starts[at + 1] < offset : starts[at + 1] <= offset)) ++at;
      return [nodes[at], offset - starts[at]];
    };
    for (let i = 0; i < places.length; i += 2) {
      const [startContainer, startOffset] = point(places[i], false);
      const begin = at;
      const [endContainer, endOffset] = point(places[i + 1], true);
      at = begin;
      const range = new StaticRange({startContainer, startOffset, endContainer, endOffset});
      ranges.push(range);
      if (ranges.length <= 2 * AROUND) all.add(range);
    }
    return choose(false);
  }

  function placeOf(range) {
    const live = rangeOf(document);
    live.setStart(range.startContainer, range.startOffset);
    live.setEnd(range.endContainer, range.endOffset);
    return live.getBoundingClientRect();
  }

  const isBelow = i => placeOf(ranges[i]).bottom > 0;

  // The first hit at or below the upper edge of the view, among those from `low` on; the last one where none is.
  function firstBelow(low) {
    let high = ranges.length - 1;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (isBelow(middle)) high = middle; else low = middle + 1;
    }
    return low;
  }

  // With very many hits the marks go along with what is seen.
  function markAround() {
    isDue = false;
    if (ranges.length <= 2 * AROUND) return;
    const here = firstBelow(0);
    if (Math.abs(here - middle) < AROUND / 2 && all.size > AROUND) return;
    middle = here;
    all.clear();
    for (const range of ranges.slice(Math.max(0, here - AROUND), here + AROUND)) all.add(range);
  }

  addEventListener('scroll', () => {
    if (!isDue) requestAnimationFrame(markAround);
    isDue = true;
  }, {passive: true});

  // The first hit at or below the upper edge of the view becomes the current one, once it is known; where there is
  // none, the first of the page.
  function choose(isComplete) {
    if (chosen >= 0 || !ranges.length) return chosen;
    if (isBelow(ranges.length - 1)) return show(firstBelow(from));
    from = ranges.length;
    return isComplete ? show(0) : -1;
  }

  function show(number) {
    chosen = number;
    current.clear();
    const range = ranges[number];
    if (!range) return chosen = -1;
    current.add(range);
    const view = scrollingOf(document) || rootOf(document);
    const place = placeOf(range);
    if (place.top < 0 || place.bottom > innerHeight) view.scrollTop += place.top - innerHeight / 3;
    if (place.left < 0 || place.right > innerWidth) view.scrollLeft += place.left - innerWidth / 3;
    return chosen;
  }

  window.lirovanFind = {clear, begin: () => { from = 0; begin(); }, more, mark, choose, show};
})();
