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

  // ---- Hit buttons take no room, but keep their place in the tab order. ----

  const style = new CSSStyleSheet();
  style.replaceSync('input[name^="ggggittt"] { width: 0 !important; height: 0 !important; margin: 0 !important;' +
    ' padding: 0 !important; border: 0 !important; outline: 0 !important; background: none !important;' +
    ' appearance: none !important; color: transparent !important; font-size: 0 !important;' +
    ' overflow: hidden !important; vertical-align: top !important; }');
  document.adoptedStyleSheets = [style];

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
  const isBlank = node => !!node && node.nodeType === Node.TEXT_NODE && /^[ \t\n\f\r]*$/.test(node.data);

  // An address stays as it is written where the parser reads its "&" as such: paths are looked for in the text.
  const probe = createElement('template');
  function addressValue(value) {
    if (!/[&]/.test(value) || /["\u00a0\r\n]/.test(value)) return escapeValue(value);
    probe.innerHTML = '<a x="' + value + '"></a>';
    return probe.content.firstChild.getAttribute('x') === value ? value : escapeValue(value);
  }

  function attributes(element) {
    let text = '';
    for (const attribute of element.attributes) {
      const value = attribute.value;
      text += ' ' + attribute.name;
      if (ALWAYS_QUOTED.has(attribute.name)) text += '="' + addressValue(value) + '"';
      else if (PLAIN_VALUE.test(value)) text += '=' + value;
      else text += '="' + escapeValue(value) + '"';
    }
    return text;
  }

  const isHtml = (node, name) =>
    !!node && node.nodeType === Node.ELEMENT_NODE && node.namespaceURI === HTML && (!name || node.tagName === name);

  // A blank text that the form replaces by its own line breaks or by nothing: beside the elements of the head, and
  // between a block's end and a rule.
  function isReplaced(blank) {
    if (!isBlank(blank)) return false;
    if (isHtml(blank.parentNode, 'HEAD')) return true;
    return isHtml(blank.nextSibling, 'HR') && isHtml(blank.previousSibling, 'DIV') && collapsesBlanks(blank.parentNode);
  }

  const collapsesBlanks = element =>
    element.nodeType === Node.ELEMENT_NODE && !getComputedStyle(element).whiteSpace.startsWith('pre');

  function sibling(node, direction) {
    do node = node[direction]; while (isBlank(node));
    return node;
  }

  function lineBreakBefore(element) {
    const before = sibling(element, 'previousSibling');
    if (isHtml(element.parentNode, 'HEAD')) return element.tagName === 'STYLE' && !isHtml(before, 'STYLE');
    return element.tagName === 'HR' && isHtml(before, 'DIV') && collapsesBlanks(element.parentNode);
  }

  const lineBreakAfter = element => element.tagName === 'STYLE' && isHtml(element.parentNode, 'HEAD');

  const contentOf = element => isHtml(element, 'TEMPLATE') ? element.content : element;

  function innerHtml(root) {
    const out = [];
    // Pending work, innermost last: a node to write, or a text.
    const work = [];
    const pushChildren = node => {
      for (let child = node.lastChild; child; child = child.previousSibling) work.push(child);
    };

    // Answers whether what follows can still be written: nothing ends a PLAINTEXT.
    function begin(element) {
      const html = isHtml(element);
      const name = element.tagName;
      if (html && lineBreakBefore(element)) out.push('\r\n');
      out.push('<', name, attributes(element), '>');
      if (html && VOID.has(name)) return true;
      if (html && RAW.has(name)) {
        out.push(rawText(element.textContent));
        if (name === 'PLAINTEXT') return false;
        out.push('</', name, '>');
        if (lineBreakAfter(element)) out.push('\r\n');
        return true;
      }
      if (html && DROPS_LINE_BREAK.has(name) && element.firstChild && element.firstChild.nodeType === Node.TEXT_NODE &&
          element.firstChild.data.startsWith('\n')) out.push('\r\n');
      work.push('</' + name + '>');
      pushChildren(contentOf(element));
      return true;
    }

    pushChildren(root);
    while (work.length) {
      const node = work.pop();
      if (typeof node === 'string') out.push(node);
      else if (node.nodeType === Node.ELEMENT_NODE) {
        if (!begin(node)) break;
      } else if (node.nodeType === Node.TEXT_NODE) {
        if (!isReplaced(node)) out.push(escapeText(node.data));
      } else if (node.nodeType === Node.COMMENT_NODE) {
        out.push('<!--', rawText(node.data), '-->');
      }
    }
    return out.join('');
  }

  // ---- Elements and scrolling ----

  const byName = name => getElementsByName(name)[0] || getElementById(name);
  const scroller = () => document.scrollingElement || document.documentElement;

  function contentCell(element) {
    let cell = null;
    for (let up = element.parentElement; up; up = up.parentElement)
      if (up.tagName === 'TD' || up.tagName === 'TH') cell = up;
    return cell;
  }

  // The elements named prefix0, prefix1, ... up to the first number that is missing.
  function numbered(prefix) {
    const found = new Map();
    for (const element of querySelectorAll('[name^="' + CSS.escape(prefix) + '"]')) {
      const name = element.getAttribute('name');
      if (!found.has(name)) found.set(name, element);
    }
    const result = [];
    for (let i = 0, element; (element = found.get(prefix + i)); ++i) result.push(element);
    return result;
  }

  function offsets(prefix) {
    const tops = new Map();
    const topOf = element => {
      if (!tops.has(element)) tops.set(element, element ? element.getBoundingClientRect().top : -scroller().scrollTop);
      return tops.get(element);
    };
    return numbered(prefix).map(element => element.getBoundingClientRect().top - topOf(contentCell(element))).join(' ');
  }

  function isInFirstView(prefix, line) {
    const uppermost = numbered(prefix).reduce((top, each) => Math.min(top, each.getBoundingClientRect().top), Infinity);
    return uppermost + scroller().scrollTop + line <= innerHeight;
  }

  function focusElement(name) {
    const element = byName(name);
    if (!element) return false;
    element.focus({preventScroll: true});
    const place = element.getBoundingClientRect();
    if (place.top < 0 || place.bottom > innerHeight) element.scrollIntoView({block: 'center'});
    return true;
  }

  // A page that was written anew calls itself complete before its pictures have come, and they move the text.
  function state() {
    if (window.lirovan.left) return 'left';
    const waits = Array.from(document.images).some(image => !image.complete && image.loading !== 'lazy');
    return waits ? 'interactive' : document.readyState;
  }

  // ---- Selection ----

  // Elements around a selection that its text keeps something of.
  const FORMAT = new Set(['A', 'B', 'BIG', 'BLOCKQUOTE', 'CENTER', 'CODE', 'DIV', 'EM', 'FONT', 'H1', 'H2', 'H3', 'H4', 'H5',
    'H6', 'I', 'LI', 'OL', 'P', 'PRE', 'S', 'SMALL', 'SPAN', 'STRIKE', 'STRONG', 'SUB', 'SUP', 'TABLE', 'TBODY', 'TR',
    'TT', 'U', 'UL']);
  const ROWS = new Set(['TABLE', 'TBODY', 'THEAD', 'TFOOT', 'TR']);

  function selectionHtml() {
    const selection = getSelection();
    if (!selection.rangeCount || selection.isCollapsed) return '';
    const range = selection.getRangeAt(0);
    let content = createElement('div');
    content.append(range.cloneContents());
    for (const idle of content.querySelectorAll('script, style, input[name^="ggggittt"], a[name^="ggggittt"]'))
      idle.remove();
    // The frame of the page, a table in a table, is left behind; rows that are selected keep their table.
    let within = range.commonAncestorContainer;
    let inRows = ROWS.has(within.nodeName);
    for (; within && within !== document.body; within = within.parentNode) {
      if (within.nodeType !== Node.ELEMENT_NODE) continue;
      const name = within.tagName;
      const keep = ROWS.has(name) ? inRows : FORMAT.has(name);
      if (!ROWS.has(name) || name === 'TABLE') inRows = false;
      if (!keep) continue;
      const around = within.cloneNode(false);
      around.removeAttribute('id');
      around.append(...content.childNodes);
      content = createElement('div');
      content.append(around);
    }
    return innerHtml(content);
  }

  window.lirovan = {
    innerHtml: () => innerHtml(document.documentElement),
    rewrite: html => {
      open();
      clear();
      write(html);
      close();
    },
    state,
    leave: () => { window.lirovan.left = true; },
    hasElement: name => !!byName(name),
    focusElement, offsets, isInFirstView, selectionHtml,
    setScrollTop: pixels => { scroller().scrollTop = pixels; },
    scrollTop: () => scroller().scrollTop,
    scrollBy: pixels => { scroller().scrollTop += pixels; },
  };
})();
