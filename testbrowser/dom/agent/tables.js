// Tables.
/** The rows of a table: of this one only, and before mode 9 in document order wherever their section stands. */
function rowsOf(table) {
  if (isModern()) return table.rows;
  const ownRows = () => Array.from(table.querySelectorAll('tr')).filter((row) => row.closest('table') === table);
  return new Collection(ownRows);
}

define('IHTMLTable', { get_rows: rowsOf });
