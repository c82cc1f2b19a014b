/**
 * @file
 * Quillmate: drives Internet Explorer pages for a software robot.
 *
 * This file is the contract of every command. The tables of the command reference (docs/commands.md,
 * docs/commands/) are made from it by tools/reference, which reads the comments: their layout is fixed.
 *
 * Linking: every command is declared as quillmate_NAME, and the import library offers these names only. The
 * DLL exports the plain NAMEs ("open", "click"), which GetProcAddress finds; QUILLMATE_LOAD does that with
 * the right type. Linking therefore never captures open, close and the like of the C library. The import
 * library also offers cJSON's whole interface, which is declared in cJSON's own header.
 *
 * Parameters: a command takes one NUL-terminated UTF-8 text, a JSON object whose members are strings:
 *
 *     {"target": "id=user", "value": "Grace"}
 *
 * Member names are compared without regard to case, values with case. A member that is missing or is no
 * string is the empty text. The parameters are checked, in the order of the list of failures, before the
 * browser is touched. Text that is no JSON object, is not UTF-8, or has 524,280 or more UTF-16 units counts
 * as empty.
 *
 * Result: a command returns JSON text with up to three members in this order:
 *
 *     {"success": true or false, "result": VALUE, "log": MESSAGE}
 *
 * "Result: success" below means that "result" is true. A failure has "success" false, "result" 0 and its
 * message as "log", unless a note says otherwise. A success has no "log".
 *
 * Bound: how long a command takes at most when the page does not respond. A page is given 5 seconds to
 * respond before a command begins. One that stops responding in the middle costs up to 5 seconds more: the
 * call under way is given up then. Bringing a tab to the front in a window that hosts the engine takes up to
 * 10 seconds more. A search on a page that responds takes as long as it needs calls, about a millisecond
 * each.
 *
 * Code page: parameter text is converted to the system's ANSI code page before it is parsed, and the texts
 * in a result are in that code page, except where "in UTF-8" is said. A character that the code page lacks
 * becomes a similar one or the code page's default character, which is usually "?".
 *
 * Ownership: the returned text belongs to the library. There are two buffers: numbers and booleans, all
 * failures among them, share the first; texts, arrays and objects share the second. A text stays valid
 * until the next result in the same buffer, from whatever thread. Copy it at once. A command returns null
 * when there is no memory for its result.
 *
 * Threads: any thread may call. Commands run on the calling thread, one after the other. The selected
 * surface, the selected frames and the remembered elements belong to the process. When several threads
 * call, the host itself must keep another thread's command from replacing a result before it is copied.
 *
 * Apartments: the first command on a thread that has not initialised COM makes it a single-threaded
 * apartment and leaves it so. A later CoInitializeEx for a multi-threaded apartment fails there. A thread
 * that has initialised COM, in whichever way, keeps its apartment. The host must not undo an initialisation
 * that it did not make. A call to a browser that hangs is given up after about five seconds.
 *
 * Message loops: a command that waits does not answer the mouse or the keyboard of the host's windows. Sent
 * messages come in while a call to the browser is under way, so a window procedure may run during a command
 * on its thread. A command issued from there fails at once with one of its messages; the running command is
 * not disturbed. A program with windows therefore calls from a thread of its own: see examples/hosts/.
 *
 * Unloading: FreeLibrary may be called between commands. From the first command on, the library may stay
 * loaded until the process ends, because threads of its own may still need it. Browsers outlive the host.
 *
 * No exception leaves a command.
 *
 * Checks, what they accept, and their messages ("%s" and "%d" are part of the text and are never filled
 * in). Locators are 1 to 65,535 bytes long. N is a whole number without leading zeros.
 * - general check (any text of at most 65,535 bytes): "Parameter verification failed!"
 * - window check (an element locator, index=N, title=TEXT, url=ADDRESS with http, https or file, or
 *   handle=NUMBER): "Parameter verification failed! The window location mechanism is
 *   index=number,url/title/xpath=%s. The value starts with the preceding four methods to locate the window
 *   position. index indicates the sequence position of the window (the sequence position refers to the
 *   sequence of tab pages in all IE windows), and url indicates the page URL of the window, title indicates
 *   the page title of the window, and xpath indicates the element that is located using the new element
 *   locating mechanism."
 * - element check (id=, name= or class= with a value, or xpath= with a path or nothing): "Parameter
 *   verification failed! The element location mechanism not support."
 * - frame check (relative=parent, relative=top, index=N, or id=, name= or src= with any text): "Parameter
 *   verification failed! The frame location mechanism is index/id/name/src=%s. The window position is
 *   located by index, id, name, and src, where index=num indicates the sequence position of the window to
 *   be switched."
 * - coordinate check (X,Y, whole numbers of 32 bits without blanks, plus signs or leading zeros):
 *   "Parameter verification failed! The value of the coordinate position should be %d,%d."
 * - option check (index=N, or value= or label= with any text): "Parameter verification failed! The value of
 *   the option should be index=number or value/label=%s."
 * - area check (left-top, center or right-bottom): "Parameter verification failed! Area should be
 *   left-top|center|right-bottom."
 * - local file check (a file:/// address of an existing file or folder): "Parameter verification failed!The
 *   local file path does not exist!"
 *
 * "The search's message" is "Element not found!", or for a path that fails at one of its steps "Find
 * element failed in N's Xpath node [ STEP ]!", where N and STEP stand for the step's number and text.
 *
 * A command that cannot run, because memory is short or because it was issued from within another one,
 * fails with one of its own messages.
 */
#ifndef QUILLMATE_H
#define QUILLMATE_H

#ifndef QUILLMATE_API
#ifdef _WIN32
#define QUILLMATE_API __declspec(dllimport)
#else
#define QUILLMATE_API
#endif
#endif

/** The version of this header, and the only place that states it: the library's own is made from here. */
#define QUILLMATE_VERSION "1.0.0"

#ifdef __cplusplus
extern "C" {
#endif

/** The type of every command. */
typedef const char* (*quillmate_command)(const char* parameters);

/**
 * Finds a command in a loaded library: QUILLMATE_LOAD(library, click) is the exported function "click" with
 * its type, or null when the library has none. A name that is no command does not compile. Needs <windows.h>,
 * and nothing of the import library.
 */
#define QUILLMATE_LOAD(library, name) \
  ((void)sizeof(&quillmate_##name), (quillmate_command)(void (*)(void))GetProcAddress((library), #name))

/** @name Windows, tabs and browsers
 * A surface is a tab of an Internet Explorer window, a tab of a window that hosts its engine, or a modal
 * HTML dialog. Most commands act on the selected one.
 * @{ */

/**
 * Selects a surface and brings it to the front.
 *
 * Parameters:
 * - "target" (window locator, required): the surface.
 * Result: success.
 * Bound: 1 second for each window that does not respond, and 5 seconds to bring the tab to the front.
 * Fails with:
 * - window check: "target" is no window locator.
 * - "Browser not found!": no surface matches.
 * - "Failed to place the web page to top!": the tab or its window cannot be brought to the front.
 * Note: A surface that cannot be brought to the front is selected all the same. Bringing it to the front
 *   maximises its window. The frames that were selected before are forgotten.
 */
QUILLMATE_API const char* quillmate_selectwindow(const char* parameters);

/**
 * Selects a surface and leaves it where it is.
 *
 * Parameters:
 * - "target" (window locator, required): the surface.
 * - "tab-status" (word, may be empty): exactly "loading": wait up to 5 seconds for the page. Anything else:
 *   do not wait.
 * Result: success.
 * Bound: 1 second for each window that does not respond, and 5 seconds for "loading".
 * Fails with:
 * - window check: "target" is no window locator.
 * - "Browser not found!": no surface matches.
 * - "The page load timeout.": the page is still loading after 5 seconds.
 * Note: After a time-out the surface is selected all the same. The frames that were selected before are
 *   forgotten.
 */
QUILLMATE_API const char* quillmate_selectwindowuntop(const char* parameters);

/**
 * Starts a browser on "about:blank", shows it and selects it.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 5 seconds for the page, after up to 6 seconds for the browser to start.
 * Fails with:
 * - "Open new browser failed!": no browser starts, or it does not navigate.
 */
QUILLMATE_API const char* quillmate_new_browser(const char* parameters);

/**
 * Opens an address in the selected tab. Starts a browser when no tab is selected.
 *
 * Parameters:
 * - "target" (text of at most 65,535 bytes, may be empty): the address. The file of a "file:" address must
 *   exist.
 * - "by" (word, may be empty): empty: the selected tab. Exactly "_blank": a new tab, which is then
 *   selected.
 * - "resize-max" (word, may be empty): exactly "False": leave the window as it is. Anything else: maximise
 *   it and bring it to the front.
 * Result: success.
 * Bound: 5 seconds for the page to respond, 5 for a new tab, 5 for the new page; 6 for a browser to
 *   start.
 * Fails with:
 * - general check: "target" is longer than 65,535 bytes, or "by" is neither empty nor "_blank".
 * - local file check: "target" begins with "file:" and names no file or folder.
 * - "Open new tab failed!": no browser starts, it does not navigate, or no new tab appears.
 * - "Select window size Fail!": the window does not maximise.
 * - "Browser not found!": the window is gone before it is maximised.
 * Note: Waits up to 5 seconds for the page. A page that takes longer is no failure.
 * Note: The file check takes what follows the first eight bytes as a path and does not decode percent
 *   escapes. A local address with a query or a fragment ("page.html?id=1", "page.html#top") therefore fails
 *   it. To open such a page, open it without them and let a script set "location.search" or
 *   "location.hash". "File:" with a capital is not checked at all.
 */
QUILLMATE_API const char* quillmate_open(const char* parameters);

/**
 * Closes the window of the selected surface with all its tabs.
 *
 * Parameters: none, may be null.
 * Result: success. Nothing is selected afterwards.
 * Bound: 5 seconds.
 * Fails with:
 * - "Frame not found!": no window is selected, or it is gone.
 * - "Quit failed!": the window cannot be closed.
 */
QUILLMATE_API const char* quillmate_quit(const char* parameters);

/**
 * Closes the selected tab or dialog.
 *
 * Parameters:
 * - "option" (word, may be empty): exactly "others": close the other tabs of its window instead, by
 *   Ctrl+Alt+F4.
 * Result: success. Nothing is selected afterwards, whatever was closed.
 * Bound: 10 seconds.
 * Fails with:
 * - "Frame not found!": no window is selected, or it is gone.
 * - "Close failed!": the tab or dialog cannot be closed.
 */
QUILLMATE_API const char* quillmate_close(const char* parameters);

/**
 * Loads the page again.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - "Frame not found!": the page is still loading.
 * - "Refresh Fail!": no window is selected, or the browser refuses.
 */
QUILLMATE_API const char* quillmate_refresh(const char* parameters);

/**
 * Goes one page forward in the history.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - "Frame not found!": no window is selected, or it is gone.
 * - "Go forward Fail!": there is no such page, or the surface is a dialog.
 */
QUILLMATE_API const char* quillmate_forward(const char* parameters);

/**
 * Goes one page back in the history.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - "Frame not found!": no window is selected, or it is gone.
 * - "Go back Fail!": there is no such page, or the surface is a dialog.
 */
QUILLMATE_API const char* quillmate_back(const char* parameters);

/**
 * Sets the size of the selected surface's window.
 *
 * Parameters:
 * - "target" ("max" or size WIDTH,HEIGHT in screen pixels, required): the size.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - "Select window size Fail!": "target" is no size, a number is negative or out of range, or the window
 *   does not take the size.
 * - "Browser not found!": no window is selected, or it is gone.
 */
QUILLMATE_API const char* quillmate_selectwindowsize(const char* parameters);

/**
 * Reads the address of the page, or of the selected frame's page.
 *
 * Parameters: none, may be null.
 * Result: text in UTF-8. The address.
 * Bound: 5 seconds.
 * Fails with:
 * - "Browser not found!": no window is selected, or it is gone.
 * - "Frame not found!": the page does not respond, or a selected frame is gone.
 * - "Get url failed!": the page does not give its address.
 */
QUILLMATE_API const char* quillmate_currenturl(const char* parameters);

/** @} */

/** @name Frames
 * Elements are searched in the page of the selected frame. Every command finds the frame anew by the path
 * of selections.
 * @{ */

/**
 * Enters a frame of the selected frame's page, or goes back up.
 *
 * Parameters:
 * - "target" (frame locator, required): the frame, or "relative=parent" or "relative=top".
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - frame check: "target" is neither a frame locator nor JSON text.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - "Can't find frame by TARGET": no frame matches. TARGET stands for the locator as it was given.
 * Note: Each selection starts from the one before. "relative=top" goes back to the page itself, even when a
 *   selected frame is gone. A failed selection changes nothing.
 * Note: JSON text passes the check, too. A frame locator in double quotes names its frame; any other JSON
 *   text names none.
 */
QUILLMATE_API const char* quillmate_selectframe(const char* parameters);

/** @} */

/** @name Scrolling and position
 * Positions are screen pixels as the host's process sees them; see "Scaled displays".
 * @{ */

/**
 * Scrolls the page by an offset.
 *
 * Parameters:
 * - "value" (offset X,Y in CSS pixels, required): the distance.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - coordinate check: "value" is no pair of numbers.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - "Scroll failed!": the page refuses.
 */
QUILLMATE_API const char* quillmate_scroll(const char* parameters);

/**
 * Scrolls the page or an element to a position.
 *
 * Parameters:
 * - "value" (position X,Y in CSS pixels, required): the position.
 * - "target" (element locator, may be empty): the element. Empty: the page.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - coordinate check: "value" is no pair of numbers.
 * - element check: "target" is neither empty nor an element locator.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - the search's message: no element matches.
 * - "Target not support scroll, please check!": the element has nothing to scroll, or its overflow is
 *   visible.
 * - "Scroll failed!": the page refuses.
 */
QUILLMATE_API const char* quillmate_scrollto(const char* parameters);

/**
 * Scrolls until an element is in view.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Scroll into view failed!": the page refuses.
 */
QUILLMATE_API const char* quillmate_scrollintoview(const char* parameters);

/**
 * Scrolls an element into view and reads its position on the screen.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "area" (one of "left-top", "center", "right-bottom", required): which point of the element's rectangle.
 * Result: text. The point X,Y in screen pixels.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - area check: "area" is none of these words.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Get elementpos failed!": the element cannot be measured.
 * - "The element is not fully visible on the browser!": part of the element is out of view even after
 *   scrolling.
 */
QUILLMATE_API const char* quillmate_getelementpos(const char* parameters);

/** @} */

/** @name Presence and waiting
 * An element is displayed unless it or one of its ancestors has a computed "display" of "none". Size,
 * opacity and "visibility" play no part.
 * @{ */

/**
 * Remembers an element under a name.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "return" (text of at most 65,535 bytes, may be empty): the name.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * Note: Later locators that are equal to the name find the element before the page is searched. Commands
 *   check the form of their locators, so choose a name with a locator's form, such as "id=first row".
 * Note: A name that is too long is not kept, and the command still succeeds. A second element under the
 *   same name replaces the first. Elements are remembered until the library is unloaded.
 */
QUILLMATE_API const char* quillmate_getelement(const char* parameters);

/**
 * Checks whether an element exists.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "check_type" (word, may be empty): exactly "visible": the element must also be displayed.
 * Result: boolean. Whether it exists.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Element not found!": the page does not respond.
 */
QUILLMATE_API const char* quillmate_haselement(const char* parameters);

/**
 * Checks whether an element exists, displayed or not.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: boolean. Whether it exists.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Element not found!": the page does not respond.
 */
QUILLMATE_API const char* quillmate_iselementexist(const char* parameters);

/**
 * Waits up to 10 seconds until an element exists.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "check_type" (word, may be empty): exactly "visible": the element must also be displayed.
 * Result: success.
 * Bound: 10 seconds, or 25 when the page does not respond.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - "Wait element show failed!": the element does not appear in time.
 * Note: Looks ten times, with a second between. A page that does not respond counts as a look that failed.
 *   When the element does not appear in time, "result" is false, not 0.
 */
QUILLMATE_API const char* quillmate_waitshow(const char* parameters);

/**
 * Waits up to 10 seconds until an element no longer exists.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "check_type" (word, may be empty): exactly "visible": an element that is not displayed counts as gone.
 * Result: success.
 * Bound: 10 seconds, or 25 when the page does not respond.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - "Wait element disappear failed!": the element does not disappear in time.
 * Note: Looks ten times, with a second between. A page that does not respond counts as a look that failed.
 *   When the element does not disappear in time, "result" is false, not 0.
 */
QUILLMATE_API const char* quillmate_waitdisappear(const char* parameters);

/**
 * Counts the elements that a locator matches.
 *
 * Parameters:
 * - "target" (element locator, required): the elements.
 * Result: number. How many there are. 0 also when there is no page.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Element not found!": the page does not respond.
 */
QUILLMATE_API const char* quillmate_getelementcount(const char* parameters);

/**
 * Counts the children of an element that have a tag name.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "value" (text of at most 65,535 bytes, may be empty): the tag name.
 * Result: number. How many there are.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - general check: "value" is longer than 65,535 bytes.
 */
QUILLMATE_API const char* quillmate_getchildelementcount(const char* parameters);

/** @} */

/** @name Acting on elements
 * These act through the document. A page that shows a message box blocks the call that caused it. "click"
 * and "executescript" therefore wait at most one second and then succeed with the number 0: the page has
 * received the call, and the box can be answered.
 * @{ */

/**
 * Clicks an element, by its own click method or with the mouse.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "manual-click" (word, may be empty): exactly "True": with the mouse. Anything else: by method.
 * Result: text, number or success. By method the empty text, or the number 0 when the page has not returned
 *   after one second. With the mouse a plain success.
 * Bound: 6 seconds: 5 for the page to respond, 1 for the call.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Click failed!": by method, the page refuses.
 * - "Switch tab failed!": with the mouse, the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": with the mouse, the element cannot be measured, or its
 *   centre is not in view even after scrolling.
 * - "Double click failed!": with the mouse, the cursor cannot be moved there. Deliberate: hosts know this
 *   message.
 */
QUILLMATE_API const char* quillmate_click(const char* parameters);

/**
 * Replaces the value of an edit field.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "value" (text of at most 65,535 bytes, may be empty): the new value.
 * Result: success.
 * Bound: 9 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - general check: "value" is longer than 65,535 bytes.
 * - "Element not found!": no element matches, or it is gone. A path's failing step is not named.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Send keys failed!": the page does not let the focus go to the field within three seconds.
 * - "Set attribute failed!": the page refuses the value.
 * Note: Gives the field the focus, empties it by Ctrl+A and Delete, pauses for half a second, and then sets
 *   the value attribute and the field's own value, or the text of an editable region that is no form
 *   control. Only the keys raise events; setting the value raises none.
 */
QUILLMATE_API const char* quillmate_type_m(const char* parameters);

/**
 * Does the same as "type_m", the pause included.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "value" (text of at most 65,535 bytes, may be empty): the new value.
 * Result: success.
 * Bound: 9 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - general check: "value" is longer than 65,535 bytes.
 * - "Element not found!": no element matches, or it is gone. A path's failing step is not named.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Send keys failed!": the page does not let the focus go to the field within three seconds.
 * - "Set attribute failed!": the page refuses the value.
 */
QUILLMATE_API const char* quillmate_fasttype(const char* parameters);

/**
 * Adds text to the value of an edit field.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "value" (text of at most 65,535 bytes, may be empty): the text to add.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - general check: "value" is longer than 65,535 bytes.
 * - the search's message: no element matches.
 * - "Failed to add text to the edit box!": the value cannot be read or written.
 * Note: Pauses for half a second between reading and writing. Raises no events.
 * Note: Of an editable region that is no form control, the text is its value.
 */
QUILLMATE_API const char* quillmate_append(const char* parameters);

/**
 * Empties an edit field.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 9 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Element not found!": no element matches. A path's failing step is not named.
 * - "Failed to clear the edit box!": the page refuses.
 * Note: Sets the value to the empty text, then sends Ctrl+A and Delete. Whether the keys arrive makes no
 *   difference to the result.
 */
QUILLMATE_API const char* quillmate_clear(const char* parameters);

/**
 * Selects an option of a drop-down list.
 *
 * Parameters:
 * - "target" (element locator, required): the list, or an option in it.
 * - "value" (option selector, required): the option.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - option check: "value" is no option selector.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - the search's message: no element matches.
 * - "Get tagName failed!": the element cannot be read.
 * - "Not dropdown menu element!": the element is neither a list nor an option in one.
 * - "Get option failed!": the list cannot be read, or the page refuses.
 * - "Target option not found!": no option matches.
 * Note: "label=" compares the whole text of an option, "value=" its whole value, both with case. "index="
 *   counts from 0. The first option that matches is taken. A change raises the page's change event.
 *   Selecting what is selected already raises none.
 */
QUILLMATE_API const char* quillmate_select_m(const char* parameters);

/**
 * Clears the selection of an option.
 *
 * Parameters:
 * - "target" (element locator, required): the list, or an option in it.
 * - "value" (option selector, required): the option.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - the search's message: no element matches.
 * - option check: "value" is no option selector.
 * - "Get tagName failed!": the element cannot be read.
 * - "Not dropdown menu element!": the element is neither a list nor an option in one.
 * - "Deselect failed!": the list cannot be read, or the page refuses.
 * - "Target option not found!": no option matches.
 * Note: Deliberate: the element is searched before the option selector is checked.
 */
QUILLMATE_API const char* quillmate_deselect(const char* parameters);

/**
 * Reads an attribute.
 *
 * Parameters:
 * - "value" (text of at most 65,535 bytes, may be empty): the attribute's name.
 * - "target" (element locator, required): the element.
 * Result: text. The attribute's text.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - general check: "value" is longer than 65,535 bytes.
 * - "Element not found!": no element matches. A path's failing step is not named.
 * - "Get attribute failed!": the element has no such attribute.
 * Note: Booleans, numbers, "class", "style" and "href" have texts, too.
 * Note: "value" names the initial value of a field, not what the field holds now. Read that with
 *   "getcontrolinfo".
 */
QUILLMATE_API const char* quillmate_getattribute(const char* parameters);

/**
 * Reads the rendered text of an element.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: text. The element's inner text.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Get text failed!": the element cannot be read.
 */
QUILLMATE_API const char* quillmate_gettext(const char* parameters);

/**
 * Puts text into an element through the document, without keys.
 *
 * Parameters:
 * - "value" (text of at most 65,535 bytes, may be empty): the text.
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - general check: "value" is longer than 65,535 bytes.
 * - the search's message: no element matches.
 * - "Send keys to element failed!": the page refuses, or the element is a file field or a list without
 *   this value.
 * Note: Sets the value attribute and the field's own value. Of an editable region that is no form control
 *   it sets the text. Raises no events.
 */
QUILLMATE_API const char* quillmate_sendkeystoelement(const char* parameters);

/**
 * Evaluates a script in the selected frame's page.
 *
 * Parameters:
 * - "value" (text of at most 65,535 bytes, may be empty): the script.
 * Result: text or number. The value of the script as a text, empty for null and undefined and the default
 *   text of an object ("[object]" where it has none), or the number 0 when the script has not returned
 *   after one second.
 * Bound: 6 seconds: 5 for the page to respond, 1 for the call.
 * Fails with:
 * - general check: "value" is longer than 65,535 bytes.
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - "Get parent window failed!": the page has no window.
 * - "Element not found!": the page is gone by the time the script starts.
 * - "Execute script failed!": the script has an error.
 */
QUILLMATE_API const char* quillmate_executescript(const char* parameters);

/**
 * Reads the source of the selected frame's page.
 *
 * Parameters: none, may be null.
 * Result: text. The outer HTML of the document element.
 * Bound: 5 seconds.
 * Fails with:
 * - "Frame not found!": there is no page, or it cannot be read.
 */
QUILLMATE_API const char* quillmate_pagesource(const char* parameters);

/**
 * Reads the cookies of the selected frame's page.
 *
 * Parameters: none, may be null.
 * Result: text in the second buffer. The cookie text, empty for a page without cookies.
 * Bound: 5 seconds.
 * Fails with:
 * - "Frame not found!": no window is selected, or it is gone.
 * - "Current IE tab is NULL!": the page does not respond, or a selected frame is gone.
 * - "Get cookie failed!": the page refuses.
 */
QUILLMATE_API const char* quillmate_getcookie(const char* parameters);

/** @} */

/** @name Message boxes
 * These answer a box that is open now. They do not wait for one. Any visible box counts whose owner's title
 * contains "Internet Explorer". The first one in the desktop's order is answered.
 * @{ */

/**
 * Answers a box with OK.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 1 second for each field and button of the box.
 * Fails with:
 * - "Assertalert failed": no box is open, or it has no such button.
 */
QUILLMATE_API const char* quillmate_assertalert(const char* parameters);

/**
 * Answers a box with OK.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 1 second for each field and button of the box.
 * Fails with:
 * - "Choose ok on next confirmation failed!": no box is open, or it has no such button.
 */
QUILLMATE_API const char* quillmate_chooseokonnextconfirmation(const char* parameters);

/**
 * Answers a box with Cancel.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 1 second for each field and button of the box.
 * Fails with:
 * - "Choose cancel on next confirmation failed!": no box is open, or it has no such button.
 */
QUILLMATE_API const char* quillmate_choosecancelonnextconfirmation(const char* parameters);

/**
 * Fills the edit fields of a box and answers it with OK.
 *
 * Parameters:
 * - "value" (text of at most 65,535 bytes, may be empty): the text.
 * Result: success.
 * Bound: 1 second for each field and button of the box.
 * Fails with:
 * - general check: "value" is longer than 65,535 bytes.
 * - "Answer on next prompt failed!": no box is open, or it has no such button.
 */
QUILLMATE_API const char* quillmate_answeronnextprompt(const char* parameters);

/**
 * Answers a box with Cancel.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: 1 second for each field and button of the box.
 * Fails with:
 * - "Choose cancel on next prompt failed!": no box is open, or it has no such button.
 */
QUILLMATE_API const char* quillmate_choosecancelonnextprompt(const char* parameters);

/**
 * Answers a box with OK or Cancel.
 *
 * Parameters:
 * - "input-value" (text, may be empty): what to put into the edit fields of the box when "accept" is
 *   "True".
 * - "accept" (one of "True", "False", required): OK or Cancel.
 * Result: success.
 * Bound: 1 second for each field and button of the box.
 * Fails with:
 * - "Click on alert dialog failed!": "accept" is neither, or no box is open, or it has no such button.
 * Note: With any other "accept" no box is looked for.
 */
QUILLMATE_API const char* quillmate_clickonalertdialog(const char* parameters);

/** @} */

/** @name Keys and mouse
 * These use the real keyboard and mouse. Those that name an element first bring its window to the front,
 * maximised. What was pressed before a failure stays pressed.
 * @{ */

/**
 * Gives an element the focus and presses keys.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "value" (key sequence of at most 65,535 bytes, may be empty): the keys.
 * Result: success.
 * Bound: 9 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - general check: "value" is longer than 65,535 bytes.
 * - "Element not found!": no element matches, or it is gone. A path's failing step is not named.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Send keys failed!": the sequence holds an unknown key name, or the page does not let the focus go to
 *   the element within three seconds.
 * Note: All keys are pressed in order and then released in reverse order: a chord, not typed text. The keys
 *   before an unknown name are pressed and stay down. When the focus does not arrive, no key is pressed.
 */
QUILLMATE_API const char* quillmate_sendkeys(const char* parameters);

/**
 * Presses the left button at the centre of an element and leaves it down.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Click and hold failed!": the cursor cannot be moved there.
 */
QUILLMATE_API const char* quillmate_clickandhold(const char* parameters);

/**
 * Double-clicks the centre of an element.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Double click failed!": the cursor cannot be moved there.
 * Note: When the library itself has clicked within the system's double-click time, it waits that time out
 *   first, so that the page sees no triple click.
 */
QUILLMATE_API const char* quillmate_doubleclick(const char* parameters);

/**
 * Clicks the centre of an element with the right button.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Right click failed!": the cursor cannot be moved there.
 */
QUILLMATE_API const char* quillmate_rightclick(const char* parameters);

/**
 * Releases the left button at the centre of an element.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 6 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Release failed!": the cursor cannot be moved there.
 */
QUILLMATE_API const char* quillmate_release(const char* parameters);

/**
 * Moves the cursor from where it is, step by step as a hand would.
 *
 * Parameters:
 * - "value" (offset X,Y in screen pixels, required): the distance.
 * Result: success.
 * Bound: none. About 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - coordinate check: "value" is no pair of numbers.
 * - "Get cursor pos failed!": the cursor's position cannot be read.
 * - "Move by offset failed!": the command cannot run; moving the cursor itself does not fail.
 * Note: The length of a move has no bound. A step covers 16 to 20 pixels and takes 3 to 6 milliseconds, on
 *   some systems up to 16: a move over 1,000 pixels takes 0.3 to 0.9 seconds, one over 1,000,000 pixels
 *   minutes. The screen's edge stops the cursor, not the command.
 */
QUILLMATE_API const char* quillmate_movebyoffset(const char* parameters);

/**
 * Moves the cursor to the centre of an element, step by step as a hand would.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured.
 * - "Move to element failed!": the command cannot run; moving the cursor itself does not fail.
 */
QUILLMATE_API const char* quillmate_movetoelement(const char* parameters);

/**
 * Moves the cursor to a point beside the centre of an element.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "value" (offset X,Y in screen pixels, required): the distance from the centre.
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - element check: "target" is no element locator.
 * - coordinate check: "value" is no pair of numbers.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Move to element with offset failed!": the command cannot run; moving the cursor itself does not fail.
 */
QUILLMATE_API const char* quillmate_movetoelementwithoffset(const char* parameters);

/**
 * Moves the cursor by an offset from the centre of an element, or from where it is.
 *
 * Parameters:
 * - "value" (offset X,Y in screen pixels, may be empty): the distance. Empty: "0,0".
 * - "target" (element locator, may be empty): the element. Empty: from where the cursor is.
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - coordinate check: "value" is neither empty nor a pair of numbers.
 * - element check: "target" is neither empty nor an element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Move to element with offset failed!": the command cannot run; moving the cursor itself does not fail.
 * - "Get cursor pos failed!": the cursor's position cannot be read.
 * - "Move by offset failed!": the command cannot run; moving the cursor itself does not fail.
 */
QUILLMATE_API const char* quillmate_move(const char* parameters);

/**
 * Drags an element onto another.
 *
 * Parameters:
 * - "target" (element locator, required): the element to drag.
 * - "value" (element locator, required): where to drop it.
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - element check: "target" or "value" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Drag and drop failed!": one of the two cannot be measured or is not in view even after scrolling, or
 *   the cursor cannot be moved there.
 * Note: When the destination cannot be reached, the button stays down.
 */
QUILLMATE_API const char* quillmate_draganddrop(const char* parameters);

/**
 * Drags an element by an offset.
 *
 * Parameters:
 * - "value" (offset X,Y in screen pixels, required): the distance.
 * - "target" (element locator, required): the element to drag.
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - element check: "target" is no element locator.
 * - coordinate check: "value" is no pair of numbers.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or its centre is not in
 *   view even after scrolling.
 * - "Drag and drop failed!": the cursor cannot be moved there.
 */
QUILLMATE_API const char* quillmate_draganddropbyoffset(const char* parameters);

/**
 * Drags an element by an offset or onto another.
 *
 * Parameters:
 * - "target" (element locator, required): the element to drag.
 * - "dest-type" (one of "pos", "element", required): what kind of destination it is.
 * - "dest-pos" (offset X,Y in screen pixels, may be empty): the distance, for "pos".
 * - "dest-element" (element locator, may be empty): where to drop the element, for "element".
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - coordinate check: "dest-type" is neither word, or for "pos" "dest-pos" is no pair of numbers.
 * - element check: "target" is no element locator, or for "element" "dest-element" is none.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": for "pos", the element cannot be measured, or its centre
 *   is not in view even after scrolling.
 * - "Drag and drop failed!": for "element", one of the two cannot be measured or is not in view even after
 *   scrolling; for both, the cursor cannot be moved there.
 */
QUILLMATE_API const char* quillmate_dragdrop(const char* parameters);

/**
 * Does the same as "draganddrop".
 *
 * Parameters:
 * - "target" (element locator, required): the element to drag.
 * - "value" (element locator, required): where to drop it.
 * Result: success.
 * Bound: 5 seconds, and about 1 second for each 1,000 pixels of the way.
 * Fails with:
 * - element check: "target" or "value" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Drag and drop failed!": one of the two cannot be measured or is not in view even after scrolling, or
 *   the cursor cannot be moved there.
 * Note: When the destination cannot be reached, the button stays down.
 */
QUILLMATE_API const char* quillmate_draganddropforhtml5(const char* parameters);

/**
 * Does nothing. Hosts that collect actions begin and end their chains with it.
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: returns at once.
 * Fails with:
 * - general check: the command cannot run.
 */
QUILLMATE_API const char* quillmate_actionchains(const char* parameters);

/**
 * Does the same as "actionchains".
 *
 * Parameters: none, may be null.
 * Result: success.
 * Bound: returns at once.
 * Fails with:
 * - general check: the command cannot run.
 */
QUILLMATE_API const char* quillmate_perform(const char* parameters);

/** @} */

/** @name Tables, pictures, control information
 * @{ */

/**
 * Reads a table, and its following pages when there is a control that turns them.
 *
 * Parameters:
 * - "by" (element locator, may be empty): the table, or an element in it. Empty: the element that
 *   "getelement" remembered under the empty name.
 * - "target" (element locator, may be empty): the control that turns to the next page. Empty: read one
 *   page.
 * Result: array as text in UTF-8. The rows. Each is an array of the cells' texts.
 * Bound: none. 5 seconds to find the table, then as long as its pages last.
 * Fails with:
 * - element check: "by" or "target" is neither empty nor an element locator.
 * - "Table not found!": no element matches "by", it is neither a table nor in one, or the page stops
 *   responding before its last table is read.
 * Note: The first row holds the column numbers from 0, or for a layui grid the texts of its header table.
 *   The rows of the table follow, its heading rows among them. Rows of more than 50,000 cells are left out.
 * Note: The control is clicked and the table read again as soon as the click has returned, until the
 *   control's class contains "disable". A click may take five seconds. Paging also ends, with a success and
 *   the rows read so far, when the control is gone, its click fails or opens a message box, or "by" matches
 *   no table any more. A page that loads its rows later gives its old rows again. A control that is never
 *   disabled keeps the command running for ever.
 * Note: A cell that cannot be read is the empty text. A row that cannot be read is left out.
 */
QUILLMATE_API const char* quillmate_gettable(const char* parameters);

/**
 * Saves a picture of the selected surface's window.
 *
 * Parameters:
 * - "save-path" (path, required): an existing folder.
 * - "file-name" (file name that ends in ".bmp", ".png" or ".tif" in lower case, required): the file.
 * Result: success.
 * Bound: 10 seconds.
 * Fails with:
 * - "Frame not found!": no window is selected, its page does not respond, or a selected frame is gone.
 * - "Failed to save image!": the name has another ending, or the picture cannot be taken or written.
 * Note: The picture has the size of the screen, taken from the window's origin. An existing file is
 *   replaced.
 */
QUILLMATE_API const char* quillmate_takescreenshot(const char* parameters);

/**
 * Saves a picture of the screen where an element is.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * - "save-path" (path, required): an existing folder.
 * - "file-name" (file name that ends in ".bmp", ".png" or ".tif" in lower case, required): the file.
 * Result: success.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Element not found!": the element or its frame is gone.
 * - "Switch tab failed!": the tab or its window cannot be brought to the front.
 * - "Failed to scroll the element to the view!": the element cannot be measured, or part of it is out of
 *   view even after scrolling.
 * - "Failed to save image!": the name has another ending, or the picture cannot be taken or written.
 * Note: Brings the window to the front, maximised, and scrolls the element into view. Whatever covers the
 *   element is in the picture. An existing file is replaced.
 */
QUILLMATE_API const char* quillmate_takeelementshot(const char* parameters);

/**
 * Describes an element.
 *
 * Parameters:
 * - "target" (element locator, required): the element.
 * Result: object. "rect" with "left", "top", "right", "bottom" and "size" with "width", "height", whole
 *   screen pixels; "tagname"; "text", the current value of a form control, else the inner text.
 * Bound: 5 seconds.
 * Fails with:
 * - element check: "target" is no element locator.
 * - the search's message: no element matches.
 * - "Get elementpos failed!": the element cannot be measured.
 * - "Element not found!": the element or its frame is gone.
 * Note: Scrolls the element into view. The text of a button is its value, which its caption is not:
 *   "gettext" reads the caption.
 */
QUILLMATE_API const char* quillmate_getcontrolinfo(const char* parameters);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* QUILLMATE_H */
