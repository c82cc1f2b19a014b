// Three grids: one of 23 rows in pages of ten with columns fixed on both sides, one of four rows whole, one empty.
(function () {
  var towns = ['Old Harbour', 'Saltmarsh', '\u5317\u4eac', 'M\u00fcnster'];
  window.recorded = [];

  function rows(count) {
    var made = [];
    for (var i = 1; i <= count; ++i)
      made.push({ id: i, name: 'Customer ' + i, town: towns[i % towns.length], amount: (i * 37) % 100 });
    return made;
  }

  function columns(fixed) {
    return [[
      { field: 'id', title: 'No.', width: 80, fixed: fixed ? 'left' : undefined },
      { field: 'name', title: 'Name', width: 300 },
      { field: 'town', title: 'Town', width: 300 },
      { field: 'amount', title: 'Amount', width: 300, sort: !fixed, fixed: fixed ? 'right' : undefined }
    ]];
  }

  layui.use('table', function () {
    var table = layui.table;
    function done(name) {
      return function (result, page) { window.recorded.push(name + ' page ' + page); };
    }
    table.render({ elem: '#pagedtable', data: rows(23), page: { layout: ['prev', 'page', 'next'] }, limit: 10,
                   cols: columns(true), done: done('paged') });
    table.render({ elem: '#wholetable', data: rows(4), limit: 100, cols: columns(false), done: done('whole') });
    table.render({ elem: '#emptytable', data: [], page: false, cols: columns(false), done: done('empty') });
    table.on('sort(whole)', function (sorted) { window.recorded.push('sort ' + sorted.field + ' ' + sorted.type); });
    window.ready = true;
  });
})();
