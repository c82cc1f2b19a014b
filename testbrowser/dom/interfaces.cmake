# The interfaces of a page's objects whose methods the in-page agent answers.
set(TESTBROWSER_PAGE_INTERFACES
  IHTMLDocument2 IHTMLDocument3 IHTMLDocument5 IHTMLDocument6 IHTMLDocument7 IDocumentEvent
  IHTMLWindow2 IHTMLWindow3
  IHTMLElement IHTMLElement2 IHTMLElement3 IHTMLElement4 IHTMLElement6 IHTMLDOMAttribute
  IHTMLElementCollection IHTMLRect IHTMLStyle IHTMLCurrentStyle IDOMEvent IEventTarget
  IHTMLAnchorElement IHTMLButtonElement IHTMLFrameBase IHTMLFrameBase2 IHTMLInputElement IHTMLOptionElement IHTMLSelectElement
  IHTMLTable IHTMLTableRow IHTMLTextAreaElement)
