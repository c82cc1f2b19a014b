/**
 * @file
 * Quillmate: drives Internet Explorer pages for a software robot.
 *
 * Every command takes one NUL-terminated UTF-8 text, a JSON object whose members are strings, and returns
 * JSON text with up to three members in this order:
 *
 *     {"success": true or false, "result": a number, a boolean, a text, an array or an object, "log": a
 * message}
 *
 * A plain success has "result" true. A failure has "success" false, "result" 0 and its message as "log",
 * unless the command says otherwise; a success has no "log". Member names of the parameters are compared
 * without regard to case; a member that is missing or no string is the empty text. Values written as
 * "exactly" are compared with case. Parameters are checked before the browser is touched.
 *
 * Texts in an envelope are in the system's ANSI code page, unless the command says UTF-8. Parameter text that
 * is not UTF-8, or has 524,280 UTF-16 units or more, counts as empty.
 *
 * Ownership: the returned text belongs to the library. There are two buffers: numbers and booleans (every
 * failure among them) share one, texts, arrays and objects the other. A text stays valid until the next
 * result of its own group; copy it before that. A command returns null when there is no memory for its
 * envelope.
 *
 * Threads: commands may be called from any thread; they run one after the other, and copying a result before
 * another thread's command replaces it is the host's business. A host that is called back on the same thread
 * while a command runs, and issues another command from there, gets that command's failure. The calling
 * thread is initialised for COM as a single-threaded apartment unless it is initialised already; the current
 * surface and remembered elements belong to the thread that chose them.
 *
 * Messages of the parameter checks ("%s" and "%d" are part of the text and never filled in):
 * - general check: "Parameter verification failed!"
 * - window check: "Parameter verification failed! The window location mechanism is index=number,..."
 * - element check: "Parameter verification failed! The element location mechanism not support."
 * - frame check: "Parameter verification failed! The frame location mechanism is index/id/name/src=%s. ..."
 * - coordinate check: "Parameter verification failed! The value of the coordinate position should be %d,%d."
 * - option check: "Parameter verification failed! The value of the option should be index=number or
 *   value/label=%s."
 * - area check: "Parameter verification failed! Area should be left-top|center|right-bottom."
 * - local file check: "Parameter verification failed!The local file path does not exist!"
 *
 * "The search's message" is "Element not found!", or for a path that fails at one of its steps
 * "Find element failed in N's Xpath node [ STEP ]!" with the step's number and text filled in.
 *
 * docs/commands.md describes the same at more length, docs/locators.md the locators.
 *
 * Some names (open, close) are also the C library's: a file that includes <io.h> or <unistd.h> defines
 * QUILLMATE_NO_PROTOTYPES and finds the commands at run time, by GetProcAddress and quillmate_command.
 *
 * The library also exports cJSON's whole interface, for which its own header cJSON.h stands.
 */
#ifndef QUILLMATE_H
#define QUILLMATE_H

#ifdef _WIN32
#define QUILLMATE_API __declspec(dllimport)
#else
#define QUILLMATE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** The type of every command. */
typedef const char* (*quillmate_command)(const char* parameters);

#ifndef QUILLMATE_NO_PROTOTYPES

/** @name Windows, tabs and browsers
 * A surface is a tab of an Internet Explorer window, a tab of a window that hosts its engine, or a
 * modal HTML dialog. Most commands act on the current one.
 * @{ */

/**
 * Makes a surface current and brings it to the front.
 * @param parameters
 *     - "target": a window locator.
 * @return a plain success. Fails with: window check, "Browser not found!", "Failed to place the web
 *     page to top!".
 * @note A surface that cannot be brought forward is current all the same. Its window is maximised as it
 *     comes forward. The selected frames are forgotten.
 */
QUILLMATE_API const char* selectwindow(const char* parameters);

/**
 * Makes a surface current and leaves it where it is.
 * @param parameters
 *     - "target": a window locator.
 *     - "tab-status": exactly "loading": wait up to 5 seconds for the page; any other text: do not
 *       wait.
 * @return a plain success. Fails with: window check, "Browser not found!", "The page load timeout.".
 * @note After a time-out the surface is current all the same.
 */
QUILLMATE_API const char* selectwindowuntop(const char* parameters);

/**
 * Starts a browser on "about:blank", shows it and makes it current.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Open new browser failed!".
 */
QUILLMATE_API const char* new_browser(const char* parameters);

/**
 * Navigates the current tab; starts a browser when no tab is current.
 * @param parameters
 *     - "target": the address, at most 65,535 bytes; of a "file:///" address the file must exist.
 *     - "by": empty: the current tab; exactly "_blank": a new tab, which becomes current.
 *     - "resize-max": exactly "False": leave the window as it is; any other text: maximise it and bring
 *       it to the front.
 * @return a plain success. Fails with: general check, local file check, "Open new tab failed!", "Select
 *     window size Fail!", "Browser not found!".
 * @note Waits up to 5 seconds for the page; a page that takes longer is no failure. "File:" with a
 *     capital is not checked. Percent escapes in a "file:" address are not decoded for the check.
 */
QUILLMATE_API const char* open(const char* parameters);

/**
 * Closes the window of the current surface, with all its tabs.
 * @param parameters not read; may be null.
 * @return a plain success, after which nothing is current. Fails with: "Frame not found!", "Quit
 *     failed!".
 */
QUILLMATE_API const char* quit(const char* parameters);

/**
 * Closes the current tab or dialog.
 * @param parameters
 *     - "option": exactly "others": close the other tabs of its window instead, by Ctrl+Alt+F4.
 * @return a plain success, after which nothing is current, whatever was closed. Fails with: "Frame not
 *     found!", "Close failed!".
 */
QUILLMATE_API const char* close(const char* parameters);

/**
 * Loads the current page again.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Frame not found!", "Refresh Fail!".
 * @note "Frame not found!" means that the page is still loading. With nothing current the answer is
 *     "Refresh Fail!".
 */
QUILLMATE_API const char* refresh(const char* parameters);

/**
 * Goes one page forward in the history.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Frame not found!", "Go forward Fail!".
 */
QUILLMATE_API const char* forward(const char* parameters);

/**
 * Goes one page back in the history.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Frame not found!", "Go back Fail!".
 */
QUILLMATE_API const char* back(const char* parameters);

/**
 * Sizes the window of the current surface.
 * @param parameters
 *     - "target": "max", or "WIDTH,HEIGHT" in screen pixels.
 * @return a plain success. Fails with: "Select window size Fail!", "Browser not found!".
 * @note Negative and out-of-range numbers, any other text, and a window that refuses answer "Select
 *     window size Fail!".
 */
QUILLMATE_API const char* selectwindowsize(const char* parameters);

/**
 * Reads the address of the page, or of the selected frame's page.
 * @param parameters not read; may be null.
 * @return the address, a text in UTF-8. Fails with: "Browser not found!", "Frame not found!", "Get url
 *     failed!".
 */
QUILLMATE_API const char* currenturl(const char* parameters);

/** @} */

/** @name Frames
 * Elements are searched in the page of the selected frame, which is found anew by its path for every
 * command.
 * @{ */

/**
 * Enters a frame of the selected frame's page, or goes back up.
 * @param parameters
 *     - "target": a frame locator.
 * @return a plain success. Fails with: frame check, "Frame not found!", "Can't find frame by " and the
 *     locator.
 * @note Each selection is relative to the one before. "relative=top" starts again, also when a selected frame
 *     has gone from the page. A failed selection changes nothing.
 */
QUILLMATE_API const char* selectframe(const char* parameters);

/** @} */

/** @name Scrolling and position
 * Positions are pixels of the screen as the host's process sees it; see Scaled displays.
 * @{ */

/**
 * Scrolls the page by an offset.
 * @param parameters
 *     - "value": the offset "X,Y" in CSS pixels.
 * @return a plain success. Fails with: coordinate check, "Frame not found!", "Scroll failed!".
 */
QUILLMATE_API const char* scroll(const char* parameters);

/**
 * Scrolls an element, or the page, to a position.
 * @param parameters
 *     - "value": the position "X,Y" in CSS pixels.
 *     - "target": an element locator, or empty for the page.
 * @return a plain success. Fails with: coordinate check, element check, "Frame not found!", the
 *     search's message, "Target not support scroll, please check!", "Scroll failed!".
 */
QUILLMATE_API const char* scrollto(const char* parameters);

/**
 * Scrolls until an element can be seen.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Scroll into view failed!".
 */
QUILLMATE_API const char* scrollintoview(const char* parameters);

/**
 * Tells where an element is on the screen, after scrolling it into view.
 * @param parameters
 *     - "target": an element locator.
 *     - "area": "left-top", "center" or "right-bottom": which point of its rectangle.
 * @return the point, a text "X,Y" in screen pixels. Fails with: element check, area check, the search's
 *     message, "Element not found!", "The element is not fully visible on the browser!", "Get
 *     elementpos failed!".
 */
QUILLMATE_API const char* getelementpos(const char* parameters);

/** @} */

/** @name Presence and waiting
 * An element is displayed unless it or one of its ancestors has a computed "display" of "none"; size,
 * opacity and "visibility" play no part.
 * @{ */

/**
 * Remembers an element under a name, which later locators can use.
 * @param parameters
 *     - "target": an element locator.
 *     - "return": the name, at most 65,535 bytes; may be empty.
 * @return a plain success. Fails with: element check, the search's message.
 * @note A longer name is not kept, and the answer is a success all the same. A second element under the
 *     same name replaces the first. Remembered elements are held until the library is unloaded.
 */
QUILLMATE_API const char* getelement(const char* parameters);

/**
 * Tells whether an element is there.
 * @param parameters
 *     - "target": an element locator.
 *     - "check_type": exactly "visible": it must also be displayed.
 * @return true or false. Fails with: element check.
 */
QUILLMATE_API const char* haselement(const char* parameters);

/**
 * Tells whether an element is in the page, displayed or not.
 * @param parameters
 *     - "target": an element locator.
 * @return true or false. Fails with: element check.
 */
QUILLMATE_API const char* iselementexist(const char* parameters);

/**
 * Waits up to 10 seconds for an element to be there.
 * @param parameters
 *     - "target": an element locator.
 *     - "check_type": exactly "visible": it must also be displayed.
 * @return a plain success. Fails with: element check, "Frame not found!", "Wait element show failed!".
 * @note Looks once a second. After the tenth look the "result" of the failure is "false", not 0.
 */
QUILLMATE_API const char* waitshow(const char* parameters);

/**
 * Waits up to 10 seconds for an element to go.
 * @param parameters
 *     - "target": an element locator.
 *     - "check_type": exactly "visible": being hidden counts as gone.
 * @return a plain success. Fails with: element check, "Frame not found!", "Wait element disappear
 *     failed!".
 * @note Looks once a second. After the tenth look the "result" of the failure is "false", not 0.
 */
QUILLMATE_API const char* waitdisappear(const char* parameters);

/**
 * Counts the elements that a locator finds.
 * @param parameters
 *     - "target": an element locator.
 * @return the number; 0 also when there is no page. Fails with: element check.
 */
QUILLMATE_API const char* getelementcount(const char* parameters);

/**
 * Counts an element's children with a tag name.
 * @param parameters
 *     - "target": an element locator.
 *     - "value": the tag name, at most 65,535 bytes.
 * @return the number. Fails with: element check, the search's message, general check.
 */
QUILLMATE_API const char* getchildelementcount(const char* parameters);

/** @} */

/** @name Acting on elements
 * These act through the document. A page that opens a message box blocks the call that caused it;
 * "click" and "executescript" therefore wait one second at most, and then answer success with the
 * number 0: the click has been delivered, and the box waits for an answer.
 * @{ */

/**
 * Clicks an element, by its own click method or with the mouse.
 * @param parameters
 *     - "target": an element locator.
 *     - "manual-click": exactly "True": with the mouse.
 * @return by method, the empty text, or the number 0 when the page has not returned after one second;
 *     by mouse, a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Click failed!", by mouse also "Switch tab failed!", "Failed to scroll the element to the view!",
 *     "Double click failed!".
 * @note By mouse, "Double click failed!" means that the cursor could not be placed; the message is kept
 *     for hosts that know it.
 */
QUILLMATE_API const char* click(const char* parameters);

/**
 * Replaces the value of an edit field: empties it by keys, pauses for half a second, and sets the
 * value.
 * @param parameters
 *     - "target": an element locator.
 *     - "value": the text, at most 65,535 bytes.
 * @return a plain success. Fails with: element check, general check, the search's message, "Element not
 *     found!", "Switch tab failed!", "Send keys failed!", "Set attribute failed!".
 */
QUILLMATE_API const char* type_m(const char* parameters);

/**
 * The same as "type_m", pause included.
 * @param parameters
 *     - "target": an element locator.
 *     - "value": the text, at most 65,535 bytes.
 * @return a plain success. Fails with: element check, general check, the search's message, "Element not
 *     found!", "Switch tab failed!", "Send keys failed!", "Set attribute failed!".
 */
QUILLMATE_API const char* fasttype(const char* parameters);

/**
 * Adds text to what an edit field holds, after a pause of half a second.
 * @param parameters
 *     - "target": an element locator.
 *     - "value": the text, at most 65,535 bytes.
 * @return a plain success. Fails with: element check, general check, the search's message, "Failed to
 *     add text to the edit box!".
 */
QUILLMATE_API const char* append(const char* parameters);

/**
 * Empties an edit field.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Failed to clear the edit
 *     box!".
 */
QUILLMATE_API const char* clear(const char* parameters);

/**
 * Selects an option of a drop-down list.
 * @param parameters
 *     - "target": an element locator of the list, or of an option in it.
 *     - "value": an option selector.
 * @return a plain success. Fails with: element check, option check, "Frame not found!", the search's
 *     message, "Get tagName failed!", "Not dropdown menu element!", "Get option failed!", "Target
 *     option not found!".
 * @note "label=" compares the option's text exactly, "value=" its value exactly, "index=" counts from
 *     0. The first option that fits is taken. A change raises the page's change event; choosing what is
 *     chosen already raises none.
 */
QUILLMATE_API const char* select_m(const char* parameters);

/**
 * Clears the selection of an option.
 * @param parameters
 *     - "target": an element locator of the list, or of an option in it.
 *     - "value": an option selector.
 * @return a plain success. Fails with: element check, "Frame not found!", the search's message, option
 *     check, "Get tagName failed!", "Not dropdown menu element!", "Deselect failed!", "Target option
 *     not found!".
 * @note Here the element is looked for before the option selector is checked.
 */
QUILLMATE_API const char* deselect(const char* parameters);

/**
 * Reads an attribute.
 * @param parameters
 *     - "value": the attribute's name, at most 65,535 bytes.
 *     - "target": an element locator.
 * @return the attribute's text. Fails with: element check, general check, the search's message, "Get
 *     attribute failed!".
 * @note Booleans, numbers, "class", "style" and "href" have texts, too. An absent attribute is a
 *     failure.
 */
QUILLMATE_API const char* getattribute(const char* parameters);

/**
 * Reads an element's rendered text.
 * @param parameters
 *     - "target": an element locator.
 * @return the text (the element's inner text). Fails with: element check, the search's message, "Get
 *     text failed!".
 */
QUILLMATE_API const char* gettext(const char* parameters);

/**
 * Puts text into an element through the document, without keys.
 * @param parameters
 *     - "value": the text, at most 65,535 bytes.
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, general check, the search's message, "Send keys
 *     to element failed!".
 * @note Sets the value attribute and the control's own value; of an editable element that is no form
 *     control, its text. Raises no events of its own.
 */
QUILLMATE_API const char* sendkeystoelement(const char* parameters);

/**
 * Evaluates a script in the selected frame's page.
 * @param parameters
 *     - "value": the script, at most 65,535 bytes.
 * @return the script's value as a text (null and undefined are empty), or the number 0 when it has not
 *     returned after one second. Fails with: general check, "Frame not found!", "Get parent window
 *     failed!", "Execute script failed!".
 */
QUILLMATE_API const char* executescript(const char* parameters);

/**
 * Reads the source of the selected frame's page.
 * @param parameters not read; may be null.
 * @return the document element's outer HTML, a text. Fails with: "Frame not found!".
 */
QUILLMATE_API const char* pagesource(const char* parameters);

/**
 * Reads the cookies of the selected frame's page.
 * @param parameters not read; may be null.
 * @return the cookie text, in the second buffer. Fails with: "Frame not found!", "Current IE tab is
 *     NULL!", "Get cookie failed!".
 * @note A page without cookies answers the empty text.
 */
QUILLMATE_API const char* getcookie(const char* parameters);

/** @} */

/** @name Message boxes
 * These answer a box that is open now; they do not wait for one. Any visible box counts whose owner's
 * title contains "Internet Explorer"; the first one in the desktop's order is answered.
 * @{ */

/**
 * Answers a box with OK.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Assertalert failed".
 */
QUILLMATE_API const char* assertalert(const char* parameters);

/**
 * Answers a box with OK.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Choose ok on next confirmation failed!".
 */
QUILLMATE_API const char* chooseokonnextconfirmation(const char* parameters);

/**
 * Answers a box with Cancel.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Choose cancel on next confirmation failed!".
 */
QUILLMATE_API const char* choosecancelonnextconfirmation(const char* parameters);

/**
 * Fills a box's edit fields and answers it with OK.
 * @param parameters
 *     - "value": the text, at most 65,535 bytes.
 * @return a plain success. Fails with: general check, "Answer on next prompt failed!".
 */
QUILLMATE_API const char* answeronnextprompt(const char* parameters);

/**
 * Answers a box with Cancel.
 * @param parameters not read; may be null.
 * @return a plain success. Fails with: "Choose cancel on next prompt failed!".
 */
QUILLMATE_API const char* choosecancelonnextprompt(const char* parameters);

/**
 * Answers a box with OK or Cancel.
 * @param parameters
 *     - "input-value": the text for the box's edit fields, when "accept" is "True".
 *     - "accept": exactly "True" or "False".
 * @return a plain success. Fails with: "Click on alert dialog failed!".
 * @note Any other "accept" fails without looking for a box.
 */
QUILLMATE_API const char* clickonalertdialog(const char* parameters);

/** @} */

/** @name Keys and mouse
 * These bring the window to the front, maximised, and use the real keyboard and mouse. What was pressed
 * before a failure stays pressed.
 * @{ */

/**
 * Focuses an element and presses a key sequence.
 * @param parameters
 *     - "target": an element locator.
 *     - "value": the key sequence, at most 65,535 bytes.
 * @return a plain success. Fails with: element check, general check, the search's message, "Element not
 *     found!", "Switch tab failed!", "Send keys failed!".
 * @note All keys are pressed in order, then released in reverse order: a chord, not typed text. Names
 *     stand in braces ("{CTRL}{ALT}{F4}", "{ctrl}a"), single letters and digits for themselves; "* + -
 *     . /" are the keys of the numeric pad. An unknown name fails, and the keys before it stay down.
 */
QUILLMATE_API const char* sendkeys(const char* parameters);

/**
 * Presses the left button at an element's centre and leaves it down.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Failed to scroll the element to the view!", "Click and hold failed!".
 */
QUILLMATE_API const char* clickandhold(const char* parameters);

/**
 * Double-clicks an element's centre.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Failed to scroll the element to the view!", "Double click failed!".
 */
QUILLMATE_API const char* doubleclick(const char* parameters);

/**
 * Clicks an element's centre with the right button.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Failed to scroll the element to the view!", "Right click failed!".
 */
QUILLMATE_API const char* rightclick(const char* parameters);

/**
 * Releases the left button at an element's centre.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Failed to scroll the element to the view!", "Release failed!".
 */
QUILLMATE_API const char* release(const char* parameters);

/**
 * Moves the cursor from where it is, step by step as a hand would.
 * @param parameters
 *     - "value": the offset "X,Y" in screen pixels.
 * @return a plain success. Fails with: coordinate check, "Get cursor pos failed!", "Move by offset
 *     failed!".
 */
QUILLMATE_API const char* movebyoffset(const char* parameters);

/**
 * Moves the cursor to an element's centre, step by step as a hand would.
 * @param parameters
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Failed to scroll the element to the view!", "Move to element failed!".
 */
QUILLMATE_API const char* movetoelement(const char* parameters);

/**
 * Moves the cursor to a point beside an element's centre.
 * @param parameters
 *     - "target": an element locator.
 *     - "value": the offset "X,Y" from the centre in screen pixels.
 * @return a plain success. Fails with: element check, coordinate check, the search's message, "Element
 *     not found!", "Switch tab failed!", "Failed to scroll the element to the view!", "Move to element
 *     with offset failed!".
 */
QUILLMATE_API const char* movetoelementwithoffset(const char* parameters);

/**
 * Moves the cursor by an offset, from an element's centre when one is named, else from where it is.
 * @param parameters
 *     - "value": the offset "X,Y" in screen pixels; empty is "0,0".
 *     - "target": an element locator, or empty.
 * @return a plain success. Fails with: coordinate check, element check, the search's message, "Element
 *     not found!", "Switch tab failed!", "Failed to scroll the element to the view!", "Move to element
 *     with offset failed!", "Get cursor pos failed!", "Move by offset failed!".
 */
QUILLMATE_API const char* move(const char* parameters);

/**
 * Drags an element onto another.
 * @param parameters
 *     - "target": an element locator of what is dragged.
 *     - "value": an element locator of where it is dropped.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Drag and drop failed!".
 * @note When the destination cannot be reached the button stays down.
 */
QUILLMATE_API const char* draganddrop(const char* parameters);

/**
 * Drags an element by an offset.
 * @param parameters
 *     - "value": the offset "X,Y" in screen pixels.
 *     - "target": an element locator.
 * @return a plain success. Fails with: element check, coordinate check, the search's message, "Element
 *     not found!", "Switch tab failed!", "Failed to scroll the element to the view!", "Drag and drop
 *     failed!".
 */
QUILLMATE_API const char* draganddropbyoffset(const char* parameters);

/**
 * Drags an element by an offset or onto another.
 * @param parameters
 *     - "target": an element locator of what is dragged.
 *     - "dest-type": exactly "pos" or "element".
 *     - "dest-pos": the offset "X,Y" in screen pixels, for "pos".
 *     - "dest-element": an element locator of where it is dropped, for "element".
 * @return a plain success. Fails with: coordinate check, element check, the search's message, "Element
 *     not found!", "Switch tab failed!", "Failed to scroll the element to the view!", "Drag and drop
 *     failed!".
 * @note Another "dest-type" answers the coordinate message.
 */
QUILLMATE_API const char* dragdrop(const char* parameters);

/**
 * The same as "draganddrop".
 * @param parameters
 *     - "target": an element locator of what is dragged.
 *     - "value": an element locator of where it is dropped.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Drag and drop failed!".
 * @note When the destination cannot be reached the button stays down.
 */
QUILLMATE_API const char* draganddropforhtml5(const char* parameters);

/**
 * Does nothing: hosts that collect actions begin and end their chains with it.
 * @param parameters not read; may be null.
 * @return a plain success. Never fails.
 */
QUILLMATE_API const char* actionchains(const char* parameters);

/**
 * The same as "actionchains".
 * @param parameters not read; may be null.
 * @return a plain success. Never fails.
 */
QUILLMATE_API const char* perform(const char* parameters);

/** @} */

/** @name Tables, pictures, control information
 * @{ */

/**
 * Reads a table, and its following pages when there is a control that turns them.
 * @param parameters
 *     - "by": an element locator of the table or of something in it, or empty.
 *     - "target": an element locator of the next-page control, or empty.
 * @return a text: the JSON array of the rows, each an array of cell texts in UTF-8. Fails with: element
 *     check, "Table not found!".
 * @note The first row holds the column numbers from 0, or for a layui grid the texts of its header
 *     table; the table's own rows follow, its heading rows among them. The control is clicked, and the
 *     table read again at once, until the control's class contains "disable". Rows of more than 50,000
 *     cells are left out.
 */
QUILLMATE_API const char* gettable(const char* parameters);

/**
 * Saves a picture of the current window.
 * @param parameters
 *     - "save-path": an existing folder.
 *     - "file-name": a name that ends in ".bmp", ".png" or ".tif", in lower case.
 * @return a plain success. Fails with: "Frame not found!", "Failed to save image!".
 * @note The picture has the size of the screen, taken from the window's origin.
 */
QUILLMATE_API const char* takescreenshot(const char* parameters);

/**
 * Saves a picture of the screen where an element is.
 * @param parameters
 *     - "target": an element locator.
 *     - "save-path": an existing folder.
 *     - "file-name": a name that ends in ".bmp", ".png" or ".tif", in lower case.
 * @return a plain success. Fails with: element check, the search's message, "Element not found!",
 *     "Switch tab failed!", "Failed to scroll the element to the view!", "Failed to save image!".
 * @note Whatever covers the element is in the picture.
 */
QUILLMATE_API const char* takeelementshot(const char* parameters);

/**
 * Describes an element.
 * @param parameters
 *     - "target": an element locator.
 * @return an object: "rect" with "left", "top", "right", "bottom" and "size" with "width", "height",
 *     whole screen pixels; "tagname"; "text", the value of a form control, else the inner text. Fails
 *     with: element check, the search's message, "Element not found!", "Switch tab failed!", "Failed to
 *     scroll the element to the view!".
 */
QUILLMATE_API const char* getcontrolinfo(const char* parameters);

/** @} */

#endif /* QUILLMATE_NO_PROTOTYPES */

#ifdef __cplusplus
}
#endif

#endif /* QUILLMATE_H */
