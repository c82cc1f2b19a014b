// The table as a user's late-bound script reads it. Run by cscript; prints the milliseconds of the reading.
var browser = new ActiveXObject("InternetExplorer.Application");
browser.Visible = true;
browser.Navigate(WScript.Arguments(0));
while (browser.Busy || browser.ReadyState != 4) WScript.Sleep(50);
var begin = new Date().getTime();
var table = browser.Document.getElementById("t");
var cells = 0;
for (var row = 0; row < table.rows.length; ++row) {
  for (var cell = 0; cell < table.rows.item(row).cells.length; ++cell) {
    if (table.rows.item(row).cells.item(cell).innerText != "") ++cells;
  }
}
var milliseconds = new Date().getTime() - begin;
browser.Quit();
WScript.Echo(cells + " " + milliseconds);
