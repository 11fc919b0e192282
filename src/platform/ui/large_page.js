// Lays a large page out where it is seen only. The children of its body, each up to a rule, are dealt to places of
// a shadow tree, which the engine skips while they are out of sight; the page itself stays as it is written. What
// is too wide for its place scrolls in it: nothing is painted outside.
(function () {
  'use strict';

  const RulesInPlace = 60;

  // What comes is dealt once a second: the engine hands a page over in small pieces, and laying out after each
  // would hold up the next.
  const Interval = 1000;

  const [createElement, observe, disconnect, attach, assign, append] = [[Document, 'createElement'],
    [MutationObserver, 'observe'], [MutationObserver, 'disconnect'], [Element, 'attachShadow'],
    [HTMLSlotElement, 'assign'], [ShadowRoot, 'append']]
    .map(([type, name]) => Function.prototype.call.bind(type.prototype[name]));
  const reads = (type, name) =>
    Function.prototype.call.bind(Object.getOwnPropertyDescriptor(type.prototype, name).get);
  const [firstChild, nextSibling] = ['firstChild', 'nextSibling'].map(name => reads(Node, name));
  const bodyOf = reads(Document, 'body');

  const style = new CSSStyleSheet();
  style.replaceSync('slot { display: block; content-visibility: auto; contain-intrinsic-height: auto 4000px;' +
    ' overflow-x: auto; }');

  function dealChildren(body) {
    const places = attach(body, {mode: 'closed', slotAssignment: 'manual'});
    places.adoptedStyleSheets = [style];
    let last, place, group, rules, hasFullPlace = false;

    function begin() {
      places.replaceChildren();
      last = place = null;
      group = [];
      rules = 0;
    }

    // A place that is still being filled shows what it has.
    function fill() {
      if (!group.length) return;
      if (!place) append(places, place = createElement(document, 'slot'));
      assign(place, ...group);
    }

    function take() {
      for (let node = last ? nextSibling(last) : firstChild(body); node; node = nextSibling(node)) {
        group.push(last = node);
        if (!(node instanceof HTMLHRElement) || ++rules < RulesInPlace) continue;
        fill();
        hasFullPlace = true;
        place = null;
        group = [];
        rules = 0;
      }
      fill();
    }

    let timer = 0, isChanged = false;

    function deal() {
      timer = 0;
      if (isChanged) begin();
      isChanged = false;
      take();
    }

    const isAppended = record => !record.removedNodes.length && !record.nextSibling;
    begin();
    take();
    observe(new MutationObserver(records => {
      isChanged ||= !records.every(isAppended);
      if (!hasFullPlace) deal();
      else if (!timer) timer = setTimeout(deal, Interval);
    }), body, {childList: true});
  }

  const untilBody = new MutationObserver(() => {
    if (!(bodyOf(document) instanceof HTMLBodyElement)) return;
    disconnect(untilBody);
    dealChildren(bodyOf(document));
  });
  observe(untilBody, document, {childList: true, subtree: true});
})();
