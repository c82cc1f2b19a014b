// The commands as methods. Written by generate.py from the library's header.

export type Pair = string | readonly [number, number];
export type Switch = string | boolean;
export type Value = string | boolean | number | readonly [number, number] | undefined;
export type Table = (string | number)[][];
export interface ControlInfo {
  [member: string]: unknown;
}

/** One method a command. A failure rejects with a Failure. */
export abstract class Commands {
  abstract call(command: string, parameters?: Record<string, Value>, timeOut?: number): Promise<unknown>;

  /**
   * Selects a surface and brings it to the front.
   * @param target the surface. (window locator)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks A surface that cannot be brought to the front is selected all the same. Bringing it to the front
   * maximises its window. The frames that were selected before are forgotten.
   */
  async selectwindow(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("selectwindow", { "target": target }, options.timeOut);
  }

  /**
   * Selects a surface and leaves it where it is.
   * @param target the surface. (window locator)
   * @param options.tabStatus exactly "loading": wait up to 5 seconds for the page. Anything else: do not
   * wait. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks After a time-out the surface is selected all the same. The frames that were selected before are
   * forgotten.
   */
  async selectwindowuntop(target: string, options: { tabStatus?: Switch | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("selectwindowuntop", { "target": target, "tab-status": options.tabStatus }, options.timeOut);
  }

  /**
   * Starts a browser on "about:blank", shows it and selects it.
   * @param options.timeOut milliseconds that the call may take.
   */
  async new_browser(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("new_browser", {}, options.timeOut);
  }

  /**
   * Opens an address in the selected tab. Starts a browser when no tab is selected.
   * @param target the address. The file of a "file:" address must exist. (text of at most 65,535 bytes)
   * @param options.by empty: the selected tab. Exactly "_blank": a new tab, which is then selected. (word)
   * @param options.resizeMax exactly "False": leave the window as it is. Anything else: maximise it and bring
   * it to the front. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Waits up to 5 seconds for the page. A page that takes longer is no failure. The file check takes
   * what follows the first eight bytes as a path and does not decode percent escapes. A local address with a
   * query or a fragment ("page.html?id=1", "page.html#top") therefore fails it. To open such a page, open it
   * without them and let a script set "location.search" or "location.hash". "File:" with a capital is not
   * checked at all.
   */
  async open(target?: string, options: { by?: Switch | undefined; resizeMax?: Switch | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("open", { "target": target, "by": options.by, "resize-max": options.resizeMax }, options.timeOut);
  }

  /**
   * Closes the window of the selected surface with all its tabs.
   * @param options.timeOut milliseconds that the call may take.
   * @returns Nothing is selected afterwards.
   */
  async quit(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("quit", {}, options.timeOut);
  }

  /**
   * Closes the selected tab or dialog.
   * @param option exactly "others": close the other tabs of its window instead, by Ctrl+Alt+F4. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @returns Nothing is selected afterwards, whatever was closed.
   */
  async close(option?: Switch, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("close", { "option": option }, options.timeOut);
  }

  /**
   * Loads the page again.
   * @param options.timeOut milliseconds that the call may take.
   */
  async refresh(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("refresh", {}, options.timeOut);
  }

  /**
   * Goes one page forward in the history.
   * @param options.timeOut milliseconds that the call may take.
   */
  async forward(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("forward", {}, options.timeOut);
  }

  /**
   * Goes one page back in the history.
   * @param options.timeOut milliseconds that the call may take.
   */
  async back(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("back", {}, options.timeOut);
  }

  /**
   * Sets the size of the selected surface's window.
   * @param target the size. ("max" or size WIDTH,HEIGHT in screen pixels)
   * @param options.timeOut milliseconds that the call may take.
   */
  async selectwindowsize(target: Pair, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("selectwindowsize", { "target": target }, options.timeOut);
  }

  /**
   * Reads the address of the page, or of the selected frame's page.
   * @param options.timeOut milliseconds that the call may take.
   * @returns The address.
   */
  async currenturl(options: { timeOut?: number | undefined } = {}): Promise<string> {
    return (await this.call("currenturl", {}, options.timeOut)) as string;
  }

  /**
   * Enters a frame of the selected frame's page, or goes back up.
   * @param target the frame, or "relative=parent" or "relative=top". (frame locator)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Each selection starts from the one before. "relative=top" goes back to the page itself, even
   * when a selected frame is gone. A failed selection changes nothing. JSON text passes the check, too. A
   * frame locator in double quotes names its frame; any other JSON text names none.
   */
  async selectframe(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("selectframe", { "target": target }, options.timeOut);
  }

  /**
   * Scrolls the page by an offset.
   * @param value the distance. (offset X,Y in CSS pixels)
   * @param options.timeOut milliseconds that the call may take.
   */
  async scroll(value: Pair, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("scroll", { "value": value }, options.timeOut);
  }

  /**
   * Scrolls the page or an element to a position.
   * @param value the position. (position X,Y in CSS pixels)
   * @param options.target the element. Empty: the page. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async scrollto(value: Pair, options: { target?: string | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("scrollto", { "value": value, "target": options.target }, options.timeOut);
  }

  /**
   * Scrolls until an element is in view.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async scrollintoview(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("scrollintoview", { "target": target }, options.timeOut);
  }

  /**
   * Scrolls an element into view and reads its position on the screen.
   * @param target the element. (element locator)
   * @param area which point of the element's rectangle. (one of "left-top", "center", "right-bottom")
   * @param options.timeOut milliseconds that the call may take.
   * @returns The point X,Y in screen pixels.
   */
  async getelementpos(target: string, area: string, options: { timeOut?: number | undefined } = {}): Promise<string> {
    return (await this.call("getelementpos", { "target": target, "area": area }, options.timeOut)) as string;
  }

  /**
   * Remembers an element under a name.
   * @param target the element. (element locator)
   * @param options.return the name. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Later locators that are equal to the name find the element before the page is searched. Commands
   * check the form of their locators, so choose a name with a locator's form, such as "id=first row". A name
   * that is too long is not kept, and the command still succeeds. A second element under the same name
   * replaces the first. Elements are remembered until the library is unloaded.
   */
  async getelement(target: string, options: { return?: string | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("getelement", { "target": target, "return": options.return }, options.timeOut);
  }

  /**
   * Checks whether an element exists.
   * @param target the element. (element locator)
   * @param options.checkType exactly "visible": the element must also be displayed. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @returns Whether it exists.
   */
  async haselement(target: string, options: { checkType?: Switch | undefined; timeOut?: number | undefined } = {}): Promise<boolean> {
    return (await this.call("haselement", { "target": target, "check_type": options.checkType }, options.timeOut)) as boolean;
  }

  /**
   * Checks whether an element exists, displayed or not.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @returns Whether it exists.
   */
  async iselementexist(target: string, options: { timeOut?: number | undefined } = {}): Promise<boolean> {
    return (await this.call("iselementexist", { "target": target }, options.timeOut)) as boolean;
  }

  /**
   * Waits up to 10 seconds until an element exists.
   * @param target the element. (element locator)
   * @param options.checkType exactly "visible": the element must also be displayed. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Looks ten times, with a second between. A page that does not respond counts as a look that
   * failed. When the element does not appear in time, "result" is false, not 0.
   */
  async waitshow(target: string, options: { checkType?: Switch | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("waitshow", { "target": target, "check_type": options.checkType }, options.timeOut);
  }

  /**
   * Waits up to 10 seconds until an element no longer exists.
   * @param target the element. (element locator)
   * @param options.checkType exactly "visible": an element that is not displayed counts as gone. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Looks ten times, with a second between. A page that does not respond counts as a look that
   * failed. When the element does not disappear in time, "result" is false, not 0.
   */
  async waitdisappear(target: string, options: { checkType?: Switch | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("waitdisappear", { "target": target, "check_type": options.checkType }, options.timeOut);
  }

  /**
   * Counts the elements that a locator matches.
   * @param target the elements. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @returns How many there are. 0 also when there is no page.
   */
  async getelementcount(target: string, options: { timeOut?: number | undefined } = {}): Promise<number> {
    return (await this.call("getelementcount", { "target": target }, options.timeOut)) as number;
  }

  /**
   * Counts the children of an element that have a tag name.
   * @param target the element. (element locator)
   * @param value the tag name. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @returns How many there are.
   */
  async getchildelementcount(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<number> {
    return (await this.call("getchildelementcount", { "target": target, "value": value }, options.timeOut)) as number;
  }

  /**
   * Clicks an element, by its own click method or with the mouse.
   * @param target the element. (element locator)
   * @param options.manualClick exactly "True": with the mouse. Anything else: by method. (word)
   * @param options.timeOut milliseconds that the call may take.
   * @returns By method the empty text, or the number 0 when the page has not returned after one second. With
   * the mouse a plain success.
   */
  async click(target: string, options: { manualClick?: Switch | undefined; timeOut?: number | undefined } = {}): Promise<string | number | boolean> {
    return (await this.call("click", { "target": target, "manual-click": options.manualClick }, options.timeOut)) as string | number | boolean;
  }

  /**
   * Replaces the value of an edit field.
   * @param target the element. (element locator)
   * @param value the new value. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Gives the field the focus, empties it by Ctrl+A and Delete, pauses for half a second, and then
   * sets the value attribute and the field's own value, or the text of an editable region that is no form
   * control. Only the keys raise events; setting the value raises none.
   */
  async type_m(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("type_m", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Does the same as "type_m", the pause included.
   * @param target the element. (element locator)
   * @param value the new value. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   */
  async fasttype(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("fasttype", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Adds text to the value of an edit field.
   * @param target the element. (element locator)
   * @param value the text to add. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Pauses for half a second between reading and writing. Raises no events. Of an editable region
   * that is no form control, the text is its value.
   */
  async append(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("append", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Empties an edit field.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Sets the value to the empty text, then sends Ctrl+A and Delete. Whether the keys arrive makes no
   * difference to the result.
   */
  async clear(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("clear", { "target": target }, options.timeOut);
  }

  /**
   * Selects an option of a drop-down list.
   * @param target the list, or an option in it. (element locator)
   * @param value the option. (option selector)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks "label=" compares the whole text of an option, "value=" its whole value, both with case.
   * "index=" counts from 0. The first option that matches is taken. A change raises the page's change event.
   * Selecting what is selected already raises none.
   */
  async select_m(target: string, value: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("select_m", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Clears the selection of an option.
   * @param target the list, or an option in it. (element locator)
   * @param value the option. (option selector)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Deliberate: the element is searched before the option selector is checked.
   */
  async deselect(target: string, value: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("deselect", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Reads an attribute.
   * @param target the element. (element locator)
   * @param value the attribute's name. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @returns The attribute's text.
   * @remarks Booleans, numbers, "class", "style" and "href" have texts, too. "value" names the initial value
   * of a field, not what the field holds now. Read that with "getcontrolinfo".
   */
  async getattribute(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<string> {
    return (await this.call("getattribute", { "target": target, "value": value }, options.timeOut)) as string;
  }

  /**
   * Reads the rendered text of an element.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @returns The element's inner text.
   */
  async gettext(target: string, options: { timeOut?: number | undefined } = {}): Promise<string> {
    return (await this.call("gettext", { "target": target }, options.timeOut)) as string;
  }

  /**
   * Puts text into an element through the document, without keys.
   * @param target the element. (element locator)
   * @param value the text. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Sets the value attribute and the field's own value. Of an editable region that is no form
   * control it sets the text. Raises no events.
   */
  async sendkeystoelement(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("sendkeystoelement", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Evaluates a script in the selected frame's page.
   * @param value the script. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @returns The value of the script as a text, empty for null and undefined and the default text of an
   * object ("[object]" where it has none), or the number 0 when the script has not returned after one second.
   */
  async executescript(value?: string, options: { timeOut?: number | undefined } = {}): Promise<string | number> {
    return (await this.call("executescript", { "value": value }, options.timeOut)) as string | number;
  }

  /**
   * Reads the source of the selected frame's page.
   * @param options.timeOut milliseconds that the call may take.
   * @returns The outer HTML of the document element.
   */
  async pagesource(options: { timeOut?: number | undefined } = {}): Promise<string> {
    return (await this.call("pagesource", {}, options.timeOut)) as string;
  }

  /**
   * Reads the cookies of the selected frame's page.
   * @param options.timeOut milliseconds that the call may take.
   * @returns The cookie text, empty for a page without cookies.
   */
  async getcookie(options: { timeOut?: number | undefined } = {}): Promise<string> {
    return (await this.call("getcookie", {}, options.timeOut)) as string;
  }

  /**
   * Answers a box with OK.
   * @param options.timeOut milliseconds that the call may take.
   */
  async assertalert(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("assertalert", {}, options.timeOut);
  }

  /**
   * Answers a box with OK.
   * @param options.timeOut milliseconds that the call may take.
   */
  async chooseokonnextconfirmation(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("chooseokonnextconfirmation", {}, options.timeOut);
  }

  /**
   * Answers a box with Cancel.
   * @param options.timeOut milliseconds that the call may take.
   */
  async choosecancelonnextconfirmation(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("choosecancelonnextconfirmation", {}, options.timeOut);
  }

  /**
   * Fills the edit fields of a box and answers it with OK.
   * @param value the text. (text of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   */
  async answeronnextprompt(value?: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("answeronnextprompt", { "value": value }, options.timeOut);
  }

  /**
   * Answers a box with Cancel.
   * @param options.timeOut milliseconds that the call may take.
   */
  async choosecancelonnextprompt(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("choosecancelonnextprompt", {}, options.timeOut);
  }

  /**
   * Answers a box with OK or Cancel.
   * @param accept OK or Cancel. (one of "True", "False")
   * @param options.inputValue what to put into the edit fields of the box when "accept" is "True". (text)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks With any other "accept" no box is looked for.
   */
  async clickonalertdialog(accept: Switch, options: { inputValue?: string | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("clickonalertdialog", { "accept": accept, "input-value": options.inputValue }, options.timeOut);
  }

  /**
   * Gives an element the focus and presses keys.
   * @param target the element. (element locator)
   * @param value the keys. (key sequence of at most 65,535 bytes)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks All keys are pressed in order and then released in reverse order: a chord, not typed text. The
   * keys before an unknown name are pressed and stay down. When the focus does not arrive, no key is pressed.
   */
  async sendkeys(target: string, value?: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("sendkeys", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Presses the left button at the centre of an element and leaves it down.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async clickandhold(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("clickandhold", { "target": target }, options.timeOut);
  }

  /**
   * Double-clicks the centre of an element.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks When the library itself has clicked within the system's double-click time, it waits that time
   * out first, so that the page sees no triple click.
   */
  async doubleclick(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("doubleclick", { "target": target }, options.timeOut);
  }

  /**
   * Clicks the centre of an element with the right button.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async rightclick(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("rightclick", { "target": target }, options.timeOut);
  }

  /**
   * Releases the left button at the centre of an element.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async release(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("release", { "target": target }, options.timeOut);
  }

  /**
   * Moves the cursor from where it is, step by step as a hand would.
   * @param value the distance. (offset X,Y in screen pixels)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks The length of a move has no bound. A step covers 16 to 20 pixels and takes 3 to 6 milliseconds,
   * on some systems up to 16: a move over 1,000 pixels takes 0.3 to 0.9 seconds, one over 1,000,000 pixels
   * minutes. The screen's edge stops the cursor, not the command.
   */
  async movebyoffset(value: Pair, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("movebyoffset", { "value": value }, options.timeOut);
  }

  /**
   * Moves the cursor to the centre of an element, step by step as a hand would.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async movetoelement(target: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("movetoelement", { "target": target }, options.timeOut);
  }

  /**
   * Moves the cursor to a point beside the centre of an element.
   * @param target the element. (element locator)
   * @param value the distance from the centre. (offset X,Y in screen pixels)
   * @param options.timeOut milliseconds that the call may take.
   */
  async movetoelementwithoffset(target: string, value: Pair, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("movetoelementwithoffset", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Moves the cursor by an offset from the centre of an element, or from where it is.
   * @param value the distance. Empty: "0,0". (offset X,Y in screen pixels)
   * @param options.target the element. Empty: from where the cursor is. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async move(value?: Pair, options: { target?: string | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("move", { "value": value, "target": options.target }, options.timeOut);
  }

  /**
   * Drags an element onto another.
   * @param target the element to drag. (element locator)
   * @param value where to drop it. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks When the destination cannot be reached, the button stays down.
   */
  async draganddrop(target: string, value: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("draganddrop", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Drags an element by an offset.
   * @param target the element to drag. (element locator)
   * @param value the distance. (offset X,Y in screen pixels)
   * @param options.timeOut milliseconds that the call may take.
   */
  async draganddropbyoffset(target: string, value: Pair, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("draganddropbyoffset", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Drags an element by an offset or onto another.
   * @param target the element to drag. (element locator)
   * @param destType what kind of destination it is. (one of "pos", "element")
   * @param options.destPos the distance, for "pos". (offset X,Y in screen pixels)
   * @param options.destElement where to drop the element, for "element". (element locator)
   * @param options.timeOut milliseconds that the call may take.
   */
  async dragdrop(target: string, destType: string, options: { destPos?: Pair | undefined; destElement?: string | undefined; timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("dragdrop", { "target": target, "dest-type": destType, "dest-pos": options.destPos, "dest-element": options.destElement }, options.timeOut);
  }

  /**
   * Does the same as "draganddrop".
   * @param target the element to drag. (element locator)
   * @param value where to drop it. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks When the destination cannot be reached, the button stays down.
   */
  async draganddropforhtml5(target: string, value: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("draganddropforhtml5", { "target": target, "value": value }, options.timeOut);
  }

  /**
   * Does nothing. Hosts that collect actions begin and end their chains with it.
   * @param options.timeOut milliseconds that the call may take.
   */
  async actionchains(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("actionchains", {}, options.timeOut);
  }

  /**
   * Does the same as "actionchains".
   * @param options.timeOut milliseconds that the call may take.
   */
  async perform(options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("perform", {}, options.timeOut);
  }

  /**
   * Reads a table, and its following pages when there is a control that turns them.
   * @param by the table, or an element in it. Empty: the element that "getelement" remembered under the empty
   * name. (element locator)
   * @param options.target the control that turns to the next page. Empty: read one page. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @returns The rows. Each is an array of the cells' texts.
   * @remarks The first row holds the column numbers from 0, or for a layui grid the texts of its header
   * table. The rows of the table follow, its heading rows among them. Rows of more than 50,000 cells are left
   * out. The control is clicked and the table read again as soon as the click has returned, until the
   * control's class contains "disable". A click may take five seconds. Paging also ends, with a success and
   * the rows read so far, when the control is gone, its click fails or opens a message box, or "by" matches
   * no table any more. A page that loads its rows later gives its old rows again. A control that is never
   * disabled keeps the command running for ever. A cell that cannot be read is the empty text. A row that
   * cannot be read is left out.
   */
  async gettable(by?: string, options: { target?: string | undefined; timeOut?: number | undefined } = {}): Promise<Table> {
    return (await this.call("gettable", { "by": by, "target": options.target }, options.timeOut)) as Table;
  }

  /**
   * Saves a picture of the selected surface's window.
   * @param savePath an existing folder. (path)
   * @param fileName the file. (file name that ends in ".bmp", ".png" or ".tif" in lower case)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks The picture has the size of the screen, taken from the window's origin. An existing file is
   * replaced.
   */
  async takescreenshot(savePath: string, fileName: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("takescreenshot", { "save-path": savePath, "file-name": fileName }, options.timeOut);
  }

  /**
   * Saves a picture of the screen where an element is.
   * @param target the element. (element locator)
   * @param savePath an existing folder. (path)
   * @param fileName the file. (file name that ends in ".bmp", ".png" or ".tif" in lower case)
   * @param options.timeOut milliseconds that the call may take.
   * @remarks Brings the window to the front, maximised, and scrolls the element into view. Whatever covers
   * the element is in the picture. An existing file is replaced.
   */
  async takeelementshot(target: string, savePath: string, fileName: string, options: { timeOut?: number | undefined } = {}): Promise<void> {
    await this.call("takeelementshot", { "target": target, "save-path": savePath, "file-name": fileName }, options.timeOut);
  }

  /**
   * Describes an element.
   * @param target the element. (element locator)
   * @param options.timeOut milliseconds that the call may take.
   * @returns "rect" with "left", "top", "right", "bottom" and "size" with "width", "height", whole screen
   * pixels; "tagname"; "text", the current value of a form control, else the inner text.
   * @remarks Scrolls the element into view. The text of a button is its value, which its caption is not:
   * "gettext" reads the caption.
   */
  async getcontrolinfo(target: string, options: { timeOut?: number | undefined } = {}): Promise<ControlInfo> {
    return (await this.call("getcontrolinfo", { "target": target }, options.timeOut)) as ControlInfo;
  }
}
