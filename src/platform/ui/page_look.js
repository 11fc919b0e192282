// The look of pages (platform/core/page_look): style sheets of the view, beside the page. LOOK is the sheet of the
// look as the program starts it.
(function () {
  'use strict';

  const get = (type, name) => Object.getOwnPropertyDescriptor(type.prototype, name).get.bind(document);
  const [adopted, body] = [get(Document, 'adoptedStyleSheets'), get(Document, 'body')];
  const children = Function.prototype.call.bind(Object.getOwnPropertyDescriptor(Element.prototype, 'firstElementChild').get);
  const attribute = Function.prototype.call.bind(Element.prototype.getAttribute);

  function sheet() {
    const made = new CSSStyleSheet();
    document.adoptedStyleSheets = [...adopted(), made];
    return made;
  }

  // Sheets in their order: the later one has the last word.
  const [shape, look, outline] = [sheet(), sheet(), sheet()];

  // What a summary has of a topic's page: margins, type, line spacing. Larger type is told by the number of its font
  // tags, and has the sizes of a topic's.
  const SUMMARY = 'body{margin:0 auto;padding:16px 30px 40px;max-width:var(--lirovan-width,none);box-sizing:border-box;' +
    'line-height:var(--lirovan-spacing,1.55);font-family:Arial}font[face="Verdana" i]{font-family:Arial}' +
    [11, 13, 16, 18, 21, 25, 30, 38].map((size, i) => `font[face="Verdana" i][size="${i}"]{font-size:${size}px}`).join('') +
    'font[color="#000080"]>b{cursor:pointer}' +
    'img{max-width:100%;height:auto}hr{border:0;border-top:1px solid #b9c4c4;margin:1.2em 0}' +
    'table[border]:not([border="0"]){border-collapse:collapse;line-height:1.35}';
  // Under a page that is shorter than the window.
  const TOPIC = 'html,body{background:#ffffff}';

  const isFont = element => element.localName === 'font' && /^verdana$/i.test(attribute(element, 'face') || '');

  function know(first) {
    const rules = isFont(first) ? SUMMARY : first.localName === 'table' && attribute(first, 'border') === '5' ? TOPIC : '';
    shape.replaceSync(rules && '@media screen{' + rules + '}');
  }

  // The page comes piece by piece; a page that is written anew comes in the place of the one before.
  let known = null;
  const seen = () => {
    const first = body() && children(body());
    if (first && first !== known) know(known = first);
  };
  new MutationObserver(seen).observe(document, {childList: true, subtree: true});
  seen();

  // ---- What is read at the upper edge stays there when lines break anew: another look, zoom or width. ----

  const scroller = get(Document, 'scrollingElement');
  const call = (name, ...values) => Document.prototype[name].apply(document, values);
  let edge = null, width = innerWidth, isKeeping = false;

  function noteEdge() {
    edge = null;
    if (!scroller() || scroller().scrollTop < 1) return;
    for (let y = 2; y < innerHeight / 2 && !edge; y += 8) {
      const caret = call('caretRangeFromPoint', innerWidth * 0.3, y);
      const node = caret && caret.startContainer;
      if (!node || node.nodeType !== Node.TEXT_NODE || caret.startOffset >= node.data.length) continue;
      const range = call('createRange');
      range.setStart(node, caret.startOffset);
      range.setEnd(node, caret.startOffset + 1);
      edge = {range, top: range.getBoundingClientRect().top};
    }
  }

  function keepEdge() {
    const place = edge && edge.range.getBoundingClientRect();
    if (!place || !place.height) return;
    const before = scroller().scrollTop;
    scroller().scrollTop += place.top - edge.top;
    isKeeping = scroller().scrollTop !== before;
  }

  addEventListener('scroll', () => {
    if (isKeeping) isKeeping = false;
    else noteEdge();
  }, {passive: true});
  addEventListener('resize', () => {
    if (innerWidth !== width) keepEdge();
    width = innerWidth;
  });

  window.lirovanLook = {
    set: rules => {
      look.replaceSync(rules);
      keepEdge();
    },
    outline: name => outline.replaceSync(name &&
      `@media screen{input[name="${CSS.escape(name)}" i]+font>span{outline:2px solid var(--lirovan-outline, #b00020);` +
      'outline-offset:1px;border-radius:2px}}'),
  };
  window.lirovanLook.set(LOOK);
})();
