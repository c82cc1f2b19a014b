// Tables.
/** The rows of this table, without those of nested tables. Before mode 9 they come in document order. */
function rowsOf(table) {
  if (isModern()) return table.rows;
  const ownRows = () => Array.from(table.querySelectorAll('tr')).filter((row) => row.closest('table') === table);
  return new Collection(ownRows);
}

define('IHTMLTable', { get_rows: rowsOf });
