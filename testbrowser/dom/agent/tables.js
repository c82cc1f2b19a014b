// Tables, their sections, rows and cells.
/** The rows of a table: of this one only, and before mode 9 in document order wherever their section stands. */
function rowsOf(table) {
  if (isModern()) return table.rows;
  return Array.from(table.querySelectorAll('tr')).filter((row) => row.closest('table') === table);
}

const rowsCollection = (table) => collectionUnder(table, () => rowsOf(table));

function insertRow(owner, index) {
  return owner.insertRow(index === undefined ? -1 : index);
}

define('IHTMLTable', {
  get_rows: rowsCollection,
  get_tBodies: (table) => collectionUnder(table, () => table.tBodies),
  get_tHead: (table) => table.tHead,
  get_tFoot: (table) => table.tFoot,
  get_caption: (table) => table.caption,
  createTHead: (table) => table.createTHead(),
  createTFoot: (table) => table.createTFoot(),
  deleteTHead: (table) => table.deleteTHead(),
  deleteTFoot: (table) => table.deleteTFoot(),
  createCaption: (table) => table.createCaption(),
  deleteCaption: (table) => table.deleteCaption(),
  insertRow,
  deleteRow: (table, index) => table.deleteRow(index),
  get_cols: (table) => Number(table.getAttribute('cols')) || 0,
  get_border: (table) => textVariant(table.border),
  get_width: (table) => textVariant(table.width),
  get_bgColor: (table) => colorVariant(table.getAttribute('bgcolor')),
  refresh: () => undefined,
  firstPage: () => undefined,
  lastPage: () => undefined,
  nextPage: () => undefined,
  previousPage: () => undefined,
});
define('IHTMLTable2', {
  get_cells: (table) =>
    collectionUnder(table, () => Array.from(rowsOf(table)).flatMap((row) => Array.from(row.cells))),
});

define('IHTMLTableSection', {
  get_rows: (section) => collectionUnder(section, () => section.rows),
  insertRow,
  deleteRow: (section, index) => section.deleteRow(index),
});
defineTexts('IHTMLTableSection', 'align', 'vAlign');

const tableOfRow = (row) => row.closest('table');

define('IHTMLTableRow', {
  get_cells: (row) => collectionUnder(row, () => row.cells),
  get_rowIndex: (row) => (tableOfRow(row) ? Array.from(rowsOf(tableOfRow(row))).indexOf(row) : -1),
  get_sectionRowIndex: (row) => row.sectionRowIndex,
  insertCell: (row, index) => row.insertCell(index === undefined ? -1 : index),
  deleteCell: (row, index) => row.deleteCell(index),
  get_bgColor: (row) => colorVariant(row.getAttribute('bgcolor')),
});
defineTexts('IHTMLTableRow', 'align', 'vAlign');

function spanMembers(name, property) {
  return {
    [`get_${name}`]: (cell) => cell[property],
    [`put_${name}`](cell, span) {
      if (span <= 0) throw new ComError(E_INVALIDARG);
      cell[property] = span;
    },
  };
}
define('IHTMLTableCell', {
  ...spanMembers('rowSpan', 'rowSpan'),
  ...spanMembers('colSpan', 'colSpan'),
  get_cellIndex: (cell) => cell.cellIndex,
  get_noWrap: (cell) => cell.noWrap,
  get_bgColor: (cell) => colorVariant(cell.getAttribute('bgcolor')),
});
defineTexts('IHTMLTableCell', 'align', 'vAlign');

/** A colour attribute as "#rrggbb", whatever name the page wrote. */
function colorVariant(written) {
  if (!written) return textVariant('');
  const canvas = document.createElement('canvas').getContext('2d');
  canvas.fillStyle = written;
  return canvas.fillStyle;
}
