// What the page view asks of a page. Runs in a world of its own: the page's scripts neither see nor change it.
(function () {
  'use strict';

  // The next topic has the same address as the last one, but begins at its top.
  history.scrollRestoration = 'manual';

  // A page's elements can hide the document's own operations behind their names (<form name="open">).
  const own = name => Document.prototype[name].bind(document);
  const [open, clear, write, close] = ['open', 'clear', 'write', 'close'].map(own);
  const [createElement, getElementById, getElementsByName, querySelectorAll] =
    ['createElement', 'getElementById', 'getElementsByName', 'querySelectorAll'].map(own);

  // So they do with its properties, and the controls of a form with the form's (<input name="childNodes">).
  const reader = (type, name) => Object.getOwnPropertyDescriptor(type.prototype, name).get;
  const reads = (type, name) => Function.prototype.call.bind(reader(type, name));
  const [nodeType, firstChild, lastChild, previousSibling, nextSibling, parentNode, textContent] =
    ['nodeType', 'firstChild', 'lastChild', 'previousSibling', 'nextSibling', 'parentNode', 'textContent']
      .map(name => reads(Node, name));
  const [namespaceURI, tagName, attributesOf] =
    ['namespaceURI', 'tagName', 'attributes'].map(name => reads(Element, name));
  const [root, head, body, scrollingElement, images, readyState] =
    ['documentElement', 'head', 'body', 'scrollingElement', 'images', 'readyState']
      .map(name => reader(Document, name).bind(document));
  const does = (type, name) => Function.prototype.call.bind(type.prototype[name]);
  const [rect, attribute, attributeNames, setAttribute, cloneNode, focus, intoView] = [[Element, 'getBoundingClientRect'],
    [Element, 'getAttribute'], [Element, 'getAttributeNames'], [Element, 'setAttribute'], [Node, 'cloneNode'], [HTMLElement, 'focus'], [Element, 'scrollIntoView']]
    .map(([type, name]) => does(type, name));

  // ---- Hit buttons take no room, but keep their place in the tab order. ----

  const style = new CSSStyleSheet();
  style.replaceSync('input[name^="ggggittt"] { width: 0 !important; height: 0 !important; margin: 0 !important;' +
    ' padding: 0 !important; border: 0 !important; outline: 0 !important; background: none !important;' +
    ' appearance: none !important; color: transparent !important; font-size: 0 !important;' +
    ' overflow: hidden !important; vertical-align: top !important; }');
  document.adoptedStyleSheets = [...document.adoptedStyleSheets, style];

  // ---- Links to topics ("konu:5#place"). The engine takes a page away that follows a link into a scheme other than its
  // own, so the click goes to an address of that scheme, which the program answers. ----

  const topicLink = event =>
    event.composedPath().find(node => node instanceof HTMLAnchorElement && /^konu:\d+/.test(attribute(node, 'href') || ''));
  addEventListener('click', event => {
    const link = event.isTrusted && topicLink(event);
    if (!link) return;
    event.preventDefault();
    const way = createElement('a');
    setAttribute(way, 'href', 'lirovan://konu/' + attribute(link, 'href').slice(5));
    way.click();
  }, true);

  // ---- The headings of a summary's passages (search/pages/passages). The program knows by its number which one was
  // clicked. ----

  const isHeading = node => node instanceof HTMLElement && tagName(node) === 'B' && textContent(node).startsWith('>>>>>') &&
    attribute(parentNode(node), 'color') === '#000080';
  addEventListener('click', event => {
    const heading = event.isTrusted && getSelection().isCollapsed && event.composedPath().find(isHeading);
    if (!heading) return;
    const way = createElement('a');
    setAttribute(way, 'href', 'lirovan://ozet/' + [...querySelectorAll('font > b')].filter(isHeading).indexOf(heading));
    way.click();
  }, true);

  // ---- Old markup form ----

  const HTML = 'http://www.w3.org/1999/xhtml';
  const VOID = new Set(['AREA', 'BASE', 'BASEFONT', 'BGSOUND', 'BR', 'COL', 'EMBED', 'FRAME', 'HR', 'IMG', 'INPUT',
    'KEYGEN', 'LINK', 'META', 'PARAM', 'SOURCE', 'TRACK', 'WBR']);
  // Their text is taken as it stands, by the parser too.
  const RAW = new Set(['SCRIPT', 'STYLE', 'XMP', 'IFRAME', 'NOEMBED', 'NOFRAMES', 'NOSCRIPT', 'PLAINTEXT']);
  // The parser drops one line break after their opening tag.
  const DROPS_LINE_BREAK = new Set(['PRE', 'LISTING', 'TEXTAREA']);
  const ALWAYS_QUOTED = new Set(['src', 'href', 'url']);
  const PLAIN_VALUE = /^[^\s"'`=<>&]+$/;
  const CHARACTERS = {'&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;', '\u00a0': '&nbsp;', '\r': '&#13;', '\n': '\r\n'};

  const escapeText = text => text.replace(/[&<>\u00a0\r\n]/g, c => CHARACTERS[c]);
  const escapeValue = value => value.replace(/[&"\u00a0\r\n]/g, c => CHARACTERS[c]);
  const rawText = text => text.replace(/\r\n?|\n/g, '\r\n');
  const isBlank = node => !!node && nodeType(node) === Node.TEXT_NODE && /^[ \t\n\f\r]*$/.test(node.data);

  // An address stays as it is written where the parser reads its "&" as such: paths are looked for in the text.
  const probe = createElement('template');
  function addressValue(value) {
    if (!/[&]/.test(value) || /["\u00a0\r\n]/.test(value)) return escapeValue(value);
    probe.innerHTML = '<a x="' + value + '"></a>';
    return probe.content.firstChild.getAttribute('x') === value ? value : escapeValue(value);
  }

  function attributes(element) {
    let text = '';
    for (const {name, value} of attributesOf(element)) {
      text += ' ' + name;
      if (ALWAYS_QUOTED.has(name)) text += '="' + addressValue(value) + '"';
      else if (PLAIN_VALUE.test(value)) text += '=' + value;
      else text += '="' + escapeValue(value) + '"';
    }
    return text;
  }

  const isHtml = (node, name) =>
    !!node && nodeType(node) === Node.ELEMENT_NODE && namespaceURI(node) === HTML && (!name || tagName(node) === name);

  // A blank text that the form replaces by its own line breaks or by nothing: beside the elements of the head, and
  // between a block's end and a rule.
  function isReplaced(blank) {
    if (!isBlank(blank)) return false;
    if (isHtml(parentNode(blank), 'HEAD')) return true;
    return isHtml(nextSibling(blank), 'HR') && isHtml(previousSibling(blank), 'DIV') &&
      collapsesBlanks(parentNode(blank));
  }

  const collapsesBlanks = element =>
    nodeType(element) === Node.ELEMENT_NODE && !getComputedStyle(element).whiteSpace.startsWith('pre');

  function before(node) {
    do node = previousSibling(node); while (isBlank(node));
    return node;
  }

  function lineBreakBefore(element) {
    const name = tagName(element);
    if (name === 'STYLE') return isHtml(parentNode(element), 'HEAD') && !isHtml(before(element), 'STYLE');
    return name === 'HR' && isHtml(before(element), 'DIV') && collapsesBlanks(parentNode(element));
  }

  const lineBreakAfter = element => tagName(element) === 'STYLE' && isHtml(parentNode(element), 'HEAD');

  const contentOf = element => isHtml(element, 'TEMPLATE') ? element.content : element;

  const innerHtml = top => markup((work, pushChildren) => pushChildren(top));

  // `begins`: puts what is to be written on the pile.
  function markup(begins) {
    const out = [];
    // Pending work, innermost last: a node to write, or a text.
    const work = [];
    const pushChildren = node => {
      for (let child = lastChild(node); child; child = previousSibling(child)) work.push(child);
    };

    // Answers whether what follows can still be written: nothing ends a PLAINTEXT.
    function begin(element) {
      const html = isHtml(element);
      const name = tagName(element);
      if (html && lineBreakBefore(element)) out.push('\r\n');
      out.push('<', name, attributes(element), '>');
      if (html && VOID.has(name)) return true;
      if (html && RAW.has(name)) {
        out.push(rawText(textContent(element)));
        if (name === 'PLAINTEXT') return false;
        out.push('</', name, '>');
        if (lineBreakAfter(element)) out.push('\r\n');
        return true;
      }
      if (html && DROPS_LINE_BREAK.has(name)) {
        const first = firstChild(element);
        if (first && nodeType(first) === Node.TEXT_NODE && first.data.startsWith('\n')) out.push('\r\n');
      }
      work.push('</' + name + '>');
      pushChildren(contentOf(element));
      return true;
    }

    begins(work, pushChildren);
    while (work.length) {
      const node = work.pop();
      const type = typeof node === 'string' ? 0 : nodeType(node);
      if (!type) out.push(node);
      else if (type === Node.ELEMENT_NODE) {
        if (!begin(node)) break;
      } else if (type === Node.TEXT_NODE) {
        if (!isReplaced(node)) out.push(escapeText(node.data));
      } else if (type === Node.COMMENT_NODE) {
        out.push('<!--', rawText(node.data), '-->');
      }
    }
    return out.join('');
  }

  // ---- Changes without writing anew ----

  function parsed(html) {
    probe.innerHTML = html;
    return probe.content;
  }

  // In a large page there are hundreds of thousands: the engine looks for them, and what stays is not set.
  function replaceTags(from, to) {
    const [old, changed] = [from, to].map(tag => Array.from(parsed(tag).firstChild.attributes));
    const selector = 'font' + old.map(({name, value}) => '[' + name + '="' + CSS.escape(value) + '"]').join('');
    const differing = changed.filter(({value}, i) => value !== old[i].value);
    for (const element of querySelectorAll(selector)) {
      if (!isHtml(element) || attributeNames(element).length !== old.length) continue;
      if (!old.every(({name, value}) => attribute(element, name) === value)) continue;
      for (const {name, value} of differing) setAttribute(element, name, value);
    }
  }

  function replaceInPlace(pairs) {
    const before = markup(work => work.push(head()));
    let after = before;
    for (const [from, to] of pairs) {
      if (from.startsWith('<FONT ')) replaceTags(from, to);
      else after = after.replaceAll(from, () => to);
    }
    if (after !== before) head().replaceChildren(parsed(after));
  }

  // ---- Elements and scrolling ----

  const byName = name => getElementsByName(name)[0] || getElementById(name);
  const scroller = () => scrollingElement() || root();

  function contentCell(element) {
    let cell = null;
    for (let up = parentNode(element); up; up = parentNode(up))
      if (isHtml(up, 'TD') || isHtml(up, 'TH')) cell = up;
    return cell;
  }

  // The elements named prefix0, prefix1, ... up to the first number that is missing.
  function numbered(prefix) {
    const found = new Map();
    for (const element of querySelectorAll('[name^="' + CSS.escape(prefix) + '"]')) {
      const name = attribute(element, 'name');
      if (!found.has(name)) found.set(name, element);
    }
    const result = [];
    for (let i = 0, element; (element = found.get(prefix + i)); ++i) result.push(element);
    return result;
  }

  function offsets(prefix) {
    const tops = new Map();
    const topOf = element => {
      if (!tops.has(element)) tops.set(element, element ? rect(element).top : -scroller().scrollTop);
      return tops.get(element);
    };
    return numbered(prefix).map(element => rect(element).top - topOf(contentCell(element))).join(' ');
  }

  function isInFirstView(prefix, line) {
    const uppermost = numbered(prefix).reduce((top, each) => Math.min(top, rect(each).top), Infinity);
    return uppermost + scroller().scrollTop + line <= innerHeight;
  }

  function scrollTo(name) {
    const element = byName(name);
    if (element) intoView(element);
  }

  function focusElement(name) {
    const element = byName(name);
    if (!element) return false;
    focus(element, {preventScroll: true});
    const place = rect(element);
    if (place.top < 0 || place.bottom > innerHeight) intoView(element, {block: 'center'});
    return true;
  }

  // A page that was written anew calls itself complete before its pictures have come, and they move the text.
  function state() {
    if (window.lirovan.left) return 'left';
    const waits = Array.from(images()).some(image => !image.complete && image.loading !== 'lazy');
    return waits ? 'interactive' : readyState();
  }

  // ---- Selection ----

  // Elements around a selection that its text keeps something of.
  const FORMAT = new Set(['A', 'B', 'BIG', 'BLOCKQUOTE', 'CENTER', 'CODE', 'DIV', 'EM', 'FONT', 'H1', 'H2', 'H3', 'H4', 'H5',
    'H6', 'I', 'LI', 'OL', 'P', 'PRE', 'S', 'SMALL', 'SPAN', 'STRIKE', 'STRONG', 'SUB', 'SUP', 'TABLE', 'TBODY', 'TR',
    'TT', 'U', 'UL']);
  const ROWS = new Set(['TABLE', 'TBODY', 'THEAD', 'TFOOT', 'TR']);

  // The marks of a search: their text stays.
  function takeMarksOut(content) {
    const marks = 'font[color="#000080" i] > span[style^="background-color" i]';
    for (const mark of content.querySelectorAll(marks)) mark.parentNode.replaceWith(...mark.childNodes);
  }

  function selectionHtml(withMarks) {
    const selection = getSelection();
    if (!selection.rangeCount || selection.isCollapsed) return '';
    const range = selection.getRangeAt(0);
    let content = createElement('div');
    content.append(range.cloneContents());
    for (const idle of content.querySelectorAll('script, style, input[name^="ggggittt"], a[name^="ggggittt"]'))
      idle.remove();
    // What the page shows only now and then, as a menu of its own.
    for (const named of content.querySelectorAll('[id]')) {
      const shown = getElementById(attribute(named, 'id'));
      if (shown && getComputedStyle(shown).display === 'none') named.remove();
    }
    // The frame of the page, a table in a table, is left behind; rows that are selected keep their table.
    let within = range.commonAncestorContainer;
    let inRows = nodeType(within) === Node.ELEMENT_NODE && ROWS.has(tagName(within));
    for (; within && within !== body(); within = parentNode(within)) {
      if (nodeType(within) !== Node.ELEMENT_NODE) continue;
      const name = tagName(within);
      const keep = ROWS.has(name) ? inRows : FORMAT.has(name);
      if (!ROWS.has(name) || name === 'TABLE') inRows = false;
      if (!keep) continue;
      const around = cloneNode(within, false);
      around.removeAttribute('id');
      around.append(...content.childNodes);
      content = createElement('div');
      content.append(around);
    }
    if (!withMarks) takeMarksOut(content);
    return innerHtml(content);
  }

  window.lirovan = {
    innerHtml: () => innerHtml(root()),
    rewrite: html => {
      open();
      clear();
      write(html);
      close();
    },
    state,
    leave: () => { window.lirovan.left = true; },
    hasElement: name => !!byName(name),
    replaceInPlace, focusElement, scrollTo, offsets, isInFirstView, selectionHtml,
    setScrollTop: pixels => { scroller().scrollTop = pixels; },
    scrollTop: () => scroller().scrollTop,
    scrollBy: pixels => { scroller().scrollTop += pixels; },
  };
})();
