// Every text that a command can return in "log", exactly as hosts know it: spelling, capitals and the missing
// "!" of some included. Placeholders such as %s are part of the text and are never filled in.
#pragma once

namespace quillmate::messages {

inline constexpr char kBrowserNotFound[] = "Browser not found!";
inline constexpr char kFrameNotFound[] = "Frame not found!";
inline constexpr char kCurrentIETabIsNULL[] = "Current IE tab is NULL!";
inline constexpr char kGoForwardFail[] = "Go forward Fail!";
inline constexpr char kGoBackFail[] = "Go back Fail!";
inline constexpr char kRefreshFail[] = "Refresh Fail!";
inline constexpr char kSelectWindowSizeFail[] = "Select window size Fail!";
inline constexpr char kFailedToClearTheEditBox[] = "Failed to clear the edit box!";
inline constexpr char kFailedToAddTextToTheEditBox[] = "Failed to add text to the edit box!";
inline constexpr char kSendKeysToElementFailed[] = "Send keys to element failed!";
inline constexpr char kSendKeysFailed[] = "Send keys failed!";
inline constexpr char kElementNotFound[] = "Element not found!";
inline constexpr char kGetAttributeFailed[] = "Get attribute failed!";
inline constexpr char kFailedToScrollTheElementToTheView[] = "Failed to scroll the element to the view!";
inline constexpr char kClickFailed[] = "Click failed!";
inline constexpr char kClickAndHoldFailed[] = "Click and hold failed!";
inline constexpr char kCloseFailed[] = "Close failed!";
inline constexpr char kFailedToSaveImage[] = "Failed to save image!";
inline constexpr char kQuitFailed[] = "Quit failed!";
inline constexpr char kGetUrlFailed[] = "Get url failed!";
inline constexpr char kDoubleClickFailed[] = "Double click failed!";
inline constexpr char kSwitchTabFailed[] = "Switch tab failed!";
inline constexpr char kDragAndDropFailed[] = "Drag and drop failed!";
inline constexpr char kGetCookieFailed[] = "Get cookie failed!";
inline constexpr char kGetTextFailed[] = "Get text failed!";
inline constexpr char kMoveByOffsetFailed[] = "Move by offset failed!";
inline constexpr char kGetCursorPosFailed[] = "Get cursor pos failed!";
inline constexpr char kMoveToElementFailed[] = "Move to element failed!";
inline constexpr char kMoveToElementWithOffsetFailed[] = "Move to element with offset failed!";
inline constexpr char kOpenNewBrowserFailed[] = "Open new browser failed!";
inline constexpr char kOpenNewTabFailed[] = "Open new tab failed!";
inline constexpr char kReleaseFailed[] = "Release failed!";
inline constexpr char kRightClickFailed[] = "Right click failed!";
inline constexpr char kScrollFailed[] = "Scroll failed!";
inline constexpr char kTargetNotSupportScrollPleaseCheck[] = "Target not support scroll, please check!";
inline constexpr char kScrollIntoViewFailed[] = "Scroll into view failed!";
inline constexpr char kGetTagNameFailed[] = "Get tagName failed!";
inline constexpr char kGetOptionFailed[] = "Get option failed!";
inline constexpr char kDeselectFailed[] = "Deselect failed!";
inline constexpr char kTargetOptionNotFound[] = "Target option not found!";
inline constexpr char kSetAttributeFailed[] = "Set attribute failed!";
inline constexpr char kGetParentWindowFailed[] = "Get parent window failed!";
inline constexpr char kExecuteScriptFailed[] = "Execute script failed!";
inline constexpr char kAssertalertFailed[] = "Assertalert failed";
inline constexpr char kChooseOkOnNextConfirmationFailed[] = "Choose ok on next confirmation failed!";
inline constexpr char kChooseCancelOnNextConfirmationFailed[] = "Choose cancel on next confirmation failed!";
inline constexpr char kAnswerOnNextPromptFailed[] = "Answer on next prompt failed!";
inline constexpr char kChooseCancelOnNextPromptFailed[] = "Choose cancel on next prompt failed!";
inline constexpr char kClickOnAlertDialogFailed[] = "Click on alert dialog failed!";
inline constexpr char kTableNotFound[] = "Table not found!";
inline constexpr char kTheElementIsNotFullyVisibleOnTheBrowser[] =
    "The element is not fully visible on the browser!";
inline constexpr char kGetElementposFailed[] = "Get elementpos failed!";
inline constexpr char kWaitElementDisappearFailed[] = "Wait element disappear failed!";
inline constexpr char kWaitElementShowFailed[] = "Wait element show failed!";
inline constexpr char kNotDropdownMenuElement[] = "Not dropdown menu element!";
inline constexpr char kFailedToPlaceTheWebPageToTop[] = "Failed to place the web page to top!";
inline constexpr char kThePageLoadTimeout[] = "The page load timeout.";
/// Followed directly by the frame locator as the host wrote it.
inline constexpr char kCantFindFrameBy[] = "Can't find frame by ";

// Parameter checks.
inline constexpr char kInvalidParameter[] = "Parameter verification failed!";
inline constexpr char kInvalidWindowLocator[] =
    "Parameter verification failed! The window location mechanism is index=number,url/title/xpath=%s. "
    "The value starts with the preceding four methods to locate the window position. index indicates "
    "the sequence position of the window (the sequence position refers to the sequence of tab pages in "
    "all IE windows), and url indicates the page URL of the window, title indicates the page title of "
    "the window, and xpath indicates the element that is located using the new element locating "
    "mechanism.";
inline constexpr char kInvalidElementLocator[] =
    "Parameter verification failed! The element location mechanism not support.";
inline constexpr char kInvalidFrameLocator[] =
    "Parameter verification failed! The frame location mechanism is index/id/name/src=%s. The window "
    "position is located by index, id, name, and src, where index=num indicates the sequence position "
    "of the window to be switched.";
inline constexpr char kInvalidCoordinate[] =
    "Parameter verification failed! The value of the coordinate position should be %d,%d.";
inline constexpr char kInvalidOption[] =
    "Parameter verification failed! The value of the option should be index=number or value/label=%s.";
inline constexpr char kInvalidArea[] =
    "Parameter verification failed! Area should be left-top|center|right-bottom.";
inline constexpr char kLocalFileMissing[] =
    "Parameter verification failed!The local file path does not exist!";

// Kept for hosts that know the whole set; no command returns them.
inline constexpr char kExceptionHappenedWhenFindingBrowser[] = "Exception happened when finding browser!";
inline constexpr char kTheHeightAndWidthCannotBeNegative[] = "The height and width cannot be negative!";
inline constexpr char kDragAndDropByOffsetFailed[] = "Drag and drop by offset failed!";
inline constexpr char kExceptionHappenedWhenOpenNewBrowser[] = "Exception happened when open new browser!";
inline constexpr char kExceptionHappenedWhenOpenNewTab[] = "Exception happened when open new tab!";
inline constexpr char kGetTableColsFailed[] = "Get tableCols failed!";
inline constexpr char kGetTableRowsFailed[] = "Get tableRows failed!";
inline constexpr char kTheTargetPageIsNotAtTheTop[] = "The target page is not at the top.";
inline constexpr char kInvalidInteger[] = "Parameter verification failed! The value should be an integer.";

}  // namespace quillmate::messages
