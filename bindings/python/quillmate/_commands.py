"""The commands as methods. Written by generate.py from the library's header."""
from typing import Any, Dict, List, Mapping, Optional, Tuple, Union, cast

Pair = Union[str, Tuple[int, int]]
Switch = Union[str, bool]
Value = Union[str, bool, int, Tuple[int, int], None]


class Commands:
    """One method a command. A failure raises quillmate.Failure."""

    def call(self, command: str, parameters: Optional[Mapping[str, Value]] = None, *,
             time_out: Optional[float] = None) -> Any:
        raise NotImplementedError

    def selectwindow(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Selects a surface and brings it to the front.

        target: the surface. (window locator)

        A surface that cannot be brought to the front is selected all the same. Bringing it to the front
        maximises its window. The frames that were selected before are forgotten.
        """
        self.call("selectwindow", {"target": target}, time_out=time_out)

    def selectwindowuntop(self, target: str, tab_status: Optional[Switch] = None, *, time_out: Optional[float]
                          = None) -> None:
        """Selects a surface and leaves it where it is.

        target: the surface. (window locator)

        tab_status: exactly "loading": wait up to 5 seconds for the page. Anything else: do not wait. (word)

        After a time-out the surface is selected all the same. The frames that were selected before are
        forgotten.
        """
        self.call("selectwindowuntop", {"target": target, "tab-status": tab_status}, time_out=time_out)

    def new_browser(self, *, time_out: Optional[float] = None) -> None:
        """Starts a browser on "about:blank", shows it and selects it."""
        self.call("new_browser", {}, time_out=time_out)

    def open(self, target: Optional[str] = None, by: Optional[Switch] = None, resize_max: Optional[Switch] =
             None, *, time_out: Optional[float] = None) -> None:
        """Opens an address in the selected tab. Starts a browser when no tab is selected.

        target: the address. The file of a "file:" address must exist. (text of at most 65,535 bytes)

        by: empty: the selected tab. Exactly "_blank": a new tab, which is then selected. (word)

        resize_max: exactly "False": leave the window as it is. Anything else: maximise it and bring it to the
        front. (word)

        Waits up to 5 seconds for the page. A page that takes longer is no failure.

        The file check takes what follows the first eight bytes as a path and does not decode percent escapes.
        A local address with a query or a fragment ("page.html?id=1", "page.html#top") therefore fails it. To
        open such a page, open it without them and let a script set "location.search" or "location.hash".
        "File:" with a capital is not checked at all.
        """
        self.call("open", {"target": target, "by": by, "resize-max": resize_max}, time_out=time_out)

    def quit(self, *, time_out: Optional[float] = None) -> None:
        """Closes the window of the selected surface with all its tabs.

        Returns: Nothing is selected afterwards.
        """
        self.call("quit", {}, time_out=time_out)

    def close(self, option: Optional[Switch] = None, *, time_out: Optional[float] = None) -> None:
        """Closes the selected tab or dialog.

        option: exactly "others": close the other tabs of its window instead, by Ctrl+Alt+F4. (word)

        Returns: Nothing is selected afterwards, whatever was closed.
        """
        self.call("close", {"option": option}, time_out=time_out)

    def refresh(self, *, time_out: Optional[float] = None) -> None:
        """Loads the page again."""
        self.call("refresh", {}, time_out=time_out)

    def forward(self, *, time_out: Optional[float] = None) -> None:
        """Goes one page forward in the history."""
        self.call("forward", {}, time_out=time_out)

    def back(self, *, time_out: Optional[float] = None) -> None:
        """Goes one page back in the history."""
        self.call("back", {}, time_out=time_out)

    def selectwindowsize(self, target: Pair, *, time_out: Optional[float] = None) -> None:
        """Sets the size of the selected surface's window.

        target: the size. ("max" or size WIDTH,HEIGHT in screen pixels)
        """
        self.call("selectwindowsize", {"target": target}, time_out=time_out)

    def currenturl(self, *, time_out: Optional[float] = None) -> str:
        """Reads the address of the page, or of the selected frame's page.

        Returns: The address.
        """
        return cast(str, self.call("currenturl", {}, time_out=time_out))

    def selectframe(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Enters a frame of the selected frame's page, or goes back up.

        target: the frame, or "relative=parent" or "relative=top". (frame locator)

        Each selection starts from the one before. "relative=top" goes back to the page itself, even when a
        selected frame is gone. A failed selection changes nothing.

        JSON text passes the check, too. A frame locator in double quotes names its frame; any other JSON text
        names none.
        """
        self.call("selectframe", {"target": target}, time_out=time_out)

    def scroll(self, value: Pair, *, time_out: Optional[float] = None) -> None:
        """Scrolls the page by an offset.

        value: the distance. (offset X,Y in CSS pixels)
        """
        self.call("scroll", {"value": value}, time_out=time_out)

    def scrollto(self, value: Pair, target: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Scrolls the page or an element to a position.

        value: the position. (position X,Y in CSS pixels)

        target: the element. Empty: the page. (element locator)
        """
        self.call("scrollto", {"value": value, "target": target}, time_out=time_out)

    def scrollintoview(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Scrolls until an element is in view.

        target: the element. (element locator)
        """
        self.call("scrollintoview", {"target": target}, time_out=time_out)

    def getelementpos(self, target: str, area: str, *, time_out: Optional[float] = None) -> str:
        """Scrolls an element into view and reads its position on the screen.

        target: the element. (element locator)

        area: which point of the element's rectangle. (one of "left-top", "center", "right-bottom")

        Returns: The point X,Y in screen pixels.
        """
        return cast(str, self.call("getelementpos", {"target": target, "area": area}, time_out=time_out))

    def getelement(self, target: str, return_: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Remembers an element under a name.

        target: the element. (element locator)

        return_: the name. (text of at most 65,535 bytes)

        Later locators that are equal to the name find the element before the page is searched. Commands check
        the form of their locators, so choose a name with a locator's form, such as "id=first row".

        A name that is too long is not kept, and the command still succeeds. A second element under the same
        name replaces the first. Elements are remembered until the library is unloaded.
        """
        self.call("getelement", {"target": target, "return": return_}, time_out=time_out)

    def haselement(self, target: str, check_type: Optional[Switch] = None, *, time_out: Optional[float] = None) -> bool:
        """Checks whether an element exists.

        target: the element. (element locator)

        check_type: exactly "visible": the element must also be displayed. (word)

        Returns: Whether it exists.
        """
        return cast(bool, self.call("haselement", {"target": target, "check_type": check_type}, time_out=time_out))

    def iselementexist(self, target: str, *, time_out: Optional[float] = None) -> bool:
        """Checks whether an element exists, displayed or not.

        target: the element. (element locator)

        Returns: Whether it exists.
        """
        return cast(bool, self.call("iselementexist", {"target": target}, time_out=time_out))

    def waitshow(self, target: str, check_type: Optional[Switch] = None, *, time_out: Optional[float] = None) -> None:
        """Waits up to 10 seconds until an element exists.

        target: the element. (element locator)

        check_type: exactly "visible": the element must also be displayed. (word)

        Looks ten times, with a second between. A page that does not respond counts as a look that failed.
        When the element does not appear in time, "result" is false, not 0.
        """
        self.call("waitshow", {"target": target, "check_type": check_type}, time_out=time_out)

    def waitdisappear(self, target: str, check_type: Optional[Switch] = None, *, time_out: Optional[float] =
                      None) -> None:
        """Waits up to 10 seconds until an element no longer exists.

        target: the element. (element locator)

        check_type: exactly "visible": an element that is not displayed counts as gone. (word)

        Looks ten times, with a second between. A page that does not respond counts as a look that failed.
        When the element does not disappear in time, "result" is false, not 0.
        """
        self.call("waitdisappear", {"target": target, "check_type": check_type}, time_out=time_out)

    def getelementcount(self, target: str, *, time_out: Optional[float] = None) -> int:
        """Counts the elements that a locator matches.

        target: the elements. (element locator)

        Returns: How many there are. 0 also when there is no page.
        """
        return cast(int, self.call("getelementcount", {"target": target}, time_out=time_out))

    def getchildelementcount(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] =
                             None) -> int:
        """Counts the children of an element that have a tag name.

        target: the element. (element locator)

        value: the tag name. (text of at most 65,535 bytes)

        Returns: How many there are.
        """
        return cast(int, self.call("getchildelementcount", {"target": target, "value": value}, time_out=time_out))

    def click(self, target: str, manual_click: Optional[Switch] = None, *, time_out: Optional[float] = None) -> Union[str, int, bool]:
        """Clicks an element, by its own click method or with the mouse.

        target: the element. (element locator)

        manual_click: exactly "True": with the mouse. Anything else: by method. (word)

        Returns: By method the empty text, or the number 0 when the page has not returned after one second.
        With the mouse a plain success.
        """
        return cast(Union[str, int, bool], self.call("click", {"target": target, "manual-click": manual_click}, time_out=time_out))

    def type_m(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Replaces the value of an edit field.

        target: the element. (element locator)

        value: the new value. (text of at most 65,535 bytes)

        Gives the field the focus, empties it by Ctrl+A and Delete, pauses for half a second, and then sets
        the value attribute and the field's own value, or the text of an editable region that is no form
        control. Only the keys raise events; setting the value raises none.
        """
        self.call("type_m", {"target": target, "value": value}, time_out=time_out)

    def fasttype(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Does the same as "type_m", the pause included.

        target: the element. (element locator)

        value: the new value. (text of at most 65,535 bytes)
        """
        self.call("fasttype", {"target": target, "value": value}, time_out=time_out)

    def append(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Adds text to the value of an edit field.

        target: the element. (element locator)

        value: the text to add. (text of at most 65,535 bytes)

        Pauses for half a second between reading and writing. Raises no events.

        Of an editable region that is no form control, the text is its value.
        """
        self.call("append", {"target": target, "value": value}, time_out=time_out)

    def clear(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Empties an edit field.

        target: the element. (element locator)

        Sets the value to the empty text, then sends Ctrl+A and Delete. Whether the keys arrive makes no
        difference to the result.
        """
        self.call("clear", {"target": target}, time_out=time_out)

    def select_m(self, target: str, value: str, *, time_out: Optional[float] = None) -> None:
        """Selects an option of a drop-down list.

        target: the list, or an option in it. (element locator)

        value: the option. (option selector)

        "label=" compares the whole text of an option, "value=" its whole value, both with case. "index="
        counts from 0. The first option that matches is taken. A change raises the page's change event.
        Selecting what is selected already raises none.
        """
        self.call("select_m", {"target": target, "value": value}, time_out=time_out)

    def deselect(self, target: str, value: str, *, time_out: Optional[float] = None) -> None:
        """Clears the selection of an option.

        target: the list, or an option in it. (element locator)

        value: the option. (option selector)

        Deliberate: the element is searched before the option selector is checked.
        """
        self.call("deselect", {"target": target, "value": value}, time_out=time_out)

    def getattribute(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] = None) -> str:
        """Reads an attribute.

        target: the element. (element locator)

        value: the attribute's name. (text of at most 65,535 bytes)

        Returns: The attribute's text.

        Booleans, numbers, "class", "style" and "href" have texts, too.

        "value" names the initial value of a field, not what the field holds now. Read that with
        "getcontrolinfo".
        """
        return cast(str, self.call("getattribute", {"target": target, "value": value}, time_out=time_out))

    def gettext(self, target: str, *, time_out: Optional[float] = None) -> str:
        """Reads the rendered text of an element.

        target: the element. (element locator)

        Returns: The element's inner text.
        """
        return cast(str, self.call("gettext", {"target": target}, time_out=time_out))

    def sendkeystoelement(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Puts text into an element through the document, without keys.

        target: the element. (element locator)

        value: the text. (text of at most 65,535 bytes)

        Sets the value attribute and the field's own value. Of an editable region that is no form control it
        sets the text. Raises no events.
        """
        self.call("sendkeystoelement", {"target": target, "value": value}, time_out=time_out)

    def executescript(self, value: Optional[str] = None, *, time_out: Optional[float] = None) -> Union[str, int]:
        """Evaluates a script in the selected frame's page.

        value: the script. (text of at most 65,535 bytes)

        Returns: The value of the script as a text, empty for null and undefined and the default text of an
        object ("[object]" where it has none), or the number 0 when the script has not returned after one
        second.
        """
        return cast(Union[str, int], self.call("executescript", {"value": value}, time_out=time_out))

    def pagesource(self, *, time_out: Optional[float] = None) -> str:
        """Reads the source of the selected frame's page.

        Returns: The outer HTML of the document element.
        """
        return cast(str, self.call("pagesource", {}, time_out=time_out))

    def getcookie(self, *, time_out: Optional[float] = None) -> str:
        """Reads the cookies of the selected frame's page.

        Returns: The cookie text, empty for a page without cookies.
        """
        return cast(str, self.call("getcookie", {}, time_out=time_out))

    def assertalert(self, *, time_out: Optional[float] = None) -> None:
        """Answers a box with OK."""
        self.call("assertalert", {}, time_out=time_out)

    def chooseokonnextconfirmation(self, *, time_out: Optional[float] = None) -> None:
        """Answers a box with OK."""
        self.call("chooseokonnextconfirmation", {}, time_out=time_out)

    def choosecancelonnextconfirmation(self, *, time_out: Optional[float] = None) -> None:
        """Answers a box with Cancel."""
        self.call("choosecancelonnextconfirmation", {}, time_out=time_out)

    def answeronnextprompt(self, value: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Fills the edit fields of a box and answers it with OK.

        value: the text. (text of at most 65,535 bytes)
        """
        self.call("answeronnextprompt", {"value": value}, time_out=time_out)

    def choosecancelonnextprompt(self, *, time_out: Optional[float] = None) -> None:
        """Answers a box with Cancel."""
        self.call("choosecancelonnextprompt", {}, time_out=time_out)

    def clickonalertdialog(self, accept: Switch, input_value: Optional[str] = None, *, time_out:
                           Optional[float] = None) -> None:
        """Answers a box with OK or Cancel.

        accept: OK or Cancel. (one of "True", "False")

        input_value: what to put into the edit fields of the box when "accept" is "True". (text)

        With any other "accept" no box is looked for.
        """
        self.call("clickonalertdialog", {"accept": accept, "input-value": input_value}, time_out=time_out)

    def sendkeys(self, target: str, value: Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Gives an element the focus and presses keys.

        target: the element. (element locator)

        value: the keys. (key sequence of at most 65,535 bytes)

        All keys are pressed in order and then released in reverse order: a chord, not typed text. The keys
        before an unknown name are pressed and stay down. When the focus does not arrive, no key is pressed.
        """
        self.call("sendkeys", {"target": target, "value": value}, time_out=time_out)

    def clickandhold(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Presses the left button at the centre of an element and leaves it down.

        target: the element. (element locator)
        """
        self.call("clickandhold", {"target": target}, time_out=time_out)

    def doubleclick(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Double-clicks the centre of an element.

        target: the element. (element locator)

        When the library itself has clicked within the system's double-click time, it waits that time out
        first, so that the page sees no triple click.
        """
        self.call("doubleclick", {"target": target}, time_out=time_out)

    def rightclick(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Clicks the centre of an element with the right button.

        target: the element. (element locator)
        """
        self.call("rightclick", {"target": target}, time_out=time_out)

    def release(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Releases the left button at the centre of an element.

        target: the element. (element locator)
        """
        self.call("release", {"target": target}, time_out=time_out)

    def movebyoffset(self, value: Pair, *, time_out: Optional[float] = None) -> None:
        """Moves the cursor from where it is, step by step as a hand would.

        value: the distance. (offset X,Y in screen pixels)

        The length of a move has no bound. A step covers 16 to 20 pixels and takes 3 to 6 milliseconds, on
        some systems up to 16: a move over 1,000 pixels takes 0.3 to 0.9 seconds, one over 1,000,000 pixels
        minutes. The screen's edge stops the cursor, not the command.
        """
        self.call("movebyoffset", {"value": value}, time_out=time_out)

    def movetoelement(self, target: str, *, time_out: Optional[float] = None) -> None:
        """Moves the cursor to the centre of an element, step by step as a hand would.

        target: the element. (element locator)
        """
        self.call("movetoelement", {"target": target}, time_out=time_out)

    def movetoelementwithoffset(self, target: str, value: Pair, *, time_out: Optional[float] = None) -> None:
        """Moves the cursor to a point beside the centre of an element.

        target: the element. (element locator)

        value: the distance from the centre. (offset X,Y in screen pixels)
        """
        self.call("movetoelementwithoffset", {"target": target, "value": value}, time_out=time_out)

    def move(self, value: Optional[Pair] = None, target: Optional[str] = None, *, time_out: Optional[float] =
             None) -> None:
        """Moves the cursor by an offset from the centre of an element, or from where it is.

        value: the distance. Empty: "0,0". (offset X,Y in screen pixels)

        target: the element. Empty: from where the cursor is. (element locator)
        """
        self.call("move", {"value": value, "target": target}, time_out=time_out)

    def draganddrop(self, target: str, value: str, *, time_out: Optional[float] = None) -> None:
        """Drags an element onto another.

        target: the element to drag. (element locator)

        value: where to drop it. (element locator)

        When the destination cannot be reached, the button stays down.
        """
        self.call("draganddrop", {"target": target, "value": value}, time_out=time_out)

    def draganddropbyoffset(self, target: str, value: Pair, *, time_out: Optional[float] = None) -> None:
        """Drags an element by an offset.

        target: the element to drag. (element locator)

        value: the distance. (offset X,Y in screen pixels)
        """
        self.call("draganddropbyoffset", {"target": target, "value": value}, time_out=time_out)

    def dragdrop(self, target: str, dest_type: str, dest_pos: Optional[Pair] = None, dest_element:
                 Optional[str] = None, *, time_out: Optional[float] = None) -> None:
        """Drags an element by an offset or onto another.

        target: the element to drag. (element locator)

        dest_type: what kind of destination it is. (one of "pos", "element")

        dest_pos: the distance, for "pos". (offset X,Y in screen pixels)

        dest_element: where to drop the element, for "element". (element locator)
        """
        self.call("dragdrop", {"target": target, "dest-type": dest_type, "dest-pos": dest_pos, "dest-element": dest_element}, time_out=time_out)

    def draganddropforhtml5(self, target: str, value: str, *, time_out: Optional[float] = None) -> None:
        """Does the same as "draganddrop".

        target: the element to drag. (element locator)

        value: where to drop it. (element locator)

        When the destination cannot be reached, the button stays down.
        """
        self.call("draganddropforhtml5", {"target": target, "value": value}, time_out=time_out)

    def actionchains(self, *, time_out: Optional[float] = None) -> None:
        """Does nothing. Hosts that collect actions begin and end their chains with it."""
        self.call("actionchains", {}, time_out=time_out)

    def perform(self, *, time_out: Optional[float] = None) -> None:
        """Does the same as "actionchains"."""
        self.call("perform", {}, time_out=time_out)

    def gettable(self, by: Optional[str] = None, target: Optional[str] = None, *, time_out: Optional[float] =
                 None) -> List[List[Any]]:
        """Reads a table, and its following pages when there is a control that turns them.

        by: the table, or an element in it. Empty: the element that "getelement" remembered under the empty
        name. (element locator)

        target: the control that turns to the next page. Empty: read one page. (element locator)

        Returns: The rows. Each is an array of the cells' texts.

        The first row holds the column numbers from 0, or for a layui grid the texts of its header table. The
        rows of the table follow, its heading rows among them. Rows of more than 50,000 cells are left out.

        The control is clicked and the table read again as soon as the click has returned, until the control's
        class contains "disable". A click may take five seconds. Paging also ends, with a success and the rows
        read so far, when the control is gone, its click fails or opens a message box, or "by" matches no
        table any more. A page that loads its rows later gives its old rows again. A control that is never
        disabled keeps the command running for ever.

        A cell that cannot be read is the empty text. A row that cannot be read is left out.
        """
        return cast(List[List[Any]], self.call("gettable", {"by": by, "target": target}, time_out=time_out))

    def takescreenshot(self, save_path: str, file_name: str, *, time_out: Optional[float] = None) -> None:
        """Saves a picture of the selected surface's window.

        save_path: an existing folder. (path)

        file_name: the file. (file name that ends in ".bmp", ".png" or ".tif" in lower case)

        The picture has the size of the screen, taken from the window's origin. An existing file is replaced.
        """
        self.call("takescreenshot", {"save-path": save_path, "file-name": file_name}, time_out=time_out)

    def takeelementshot(self, target: str, save_path: str, file_name: str, *, time_out: Optional[float] = None) -> None:
        """Saves a picture of the screen where an element is.

        target: the element. (element locator)

        save_path: an existing folder. (path)

        file_name: the file. (file name that ends in ".bmp", ".png" or ".tif" in lower case)

        Brings the window to the front, maximised, and scrolls the element into view. Whatever covers the
        element is in the picture. An existing file is replaced.
        """
        self.call("takeelementshot", {"target": target, "save-path": save_path, "file-name": file_name}, time_out=time_out)

    def getcontrolinfo(self, target: str, *, time_out: Optional[float] = None) -> Dict[str, Any]:
        """Describes an element.

        target: the element. (element locator)

        Returns: "rect" with "left", "top", "right", "bottom" and "size" with "width", "height", whole screen
        pixels; "tagname"; "text", the current value of a form control, else the inner text.

        Scrolls the element into view. The text of a button is its value, which its caption is not: "gettext"
        reads the caption.
        """
        return cast(Dict[str, Any], self.call("getcontrolinfo", {"target": target}, time_out=time_out))
