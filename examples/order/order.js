// The order page: sums, the check of what was filled in, the question before it is sent, the receipt after it.
(function () {
  var postage = { post: 3.9, courier: 9.5, shop: 0 };
  var arrival = {
    post: 'The post needs three to five days.',
    courier: 'The courier rings tomorrow before noon.',
    shop: 'It waits for you at the counter from four o\u2019clock.'
  };

  function element(id) { return document.getElementById(id); }
  function value(id) { return element(id).value.replace(/^\s+|\s+$/g, ''); }
  function euros(amount) { return '\u20ac ' + amount.toFixed(2); }
  function show(id, text) { element(id).textContent = text; }

  function goods() {
    var basket = window.frames.basket;
    return basket && basket.basketTotal ? basket.basketTotal() : 0;
  }

  function total() {
    return goods() + (postage[value('delivery')] || 0) + (element('gift').checked ? 2.5 : 0);
  }

  window.showSums = function () {
    var chosen = value('delivery');
    show('goods', euros(goods()));
    show('postage', chosen ? euros(postage[chosen]) : 'not chosen yet');
    element('wrapline').style.display = element('gift').checked ? 'flex' : 'none';
    show('goesto', value('street') ? value('street') + ', ' + value('town') : value('town'));
    show('total', euros(total()));
  };

  function problem() {
    if (!value('customer')) return 'Please tell us your name.';
    if (!/^[^@\s]+@[^@\s]+\.[^@\s]+$/.test(value('email'))) return 'Please give an e-mail address we can answer to.';
    if (!value('delivery')) return 'Please choose how it shall reach you.';
    if (value('delivery') !== 'shop' && !value('street')) return 'Please tell us where it shall go.';
    return '';
  }

  function receive() {
    show('state', '');
    show('thanks', value('customer').split(' ')[0]);
    show('paid', euros(total()));
    show('when', arrival[value('delivery')]);
    element('receipt').style.display = 'block';
  }

  function place() {
    var wrong = problem();
    show('problem', wrong);
    element('problem').style.display = wrong ? 'block' : 'none';
    if (wrong) return;
    if (!window.confirm('Place this order for ' + euros(total()) + '?')) {
      show('state', 'Not placed.');
      return;
    }
    element('place').disabled = true;
    show('state', 'Sending\u2026');
    window.setTimeout(receive, 1500);
  }

  element('delivery').onchange = window.showSums;
  element('order').onkeyup = window.showSums;
  element('gift').onclick = window.showSums;
  element('place').onclick = place;
  window.showSums();
})();
