// Drives Internet Explorer pages.
//
//     import { Browser } from "quillmate";
//
//     await using page = await Browser.start();
//     await page.open("file:///C:/order.html");
//     await page.click("id=ok");
export { Browser, type BrowserOptions } from "./session.js";
export { Failure } from "./failure.js";
export type { ControlInfo, Pair, Switch, Table, Value } from "./commands.js";
