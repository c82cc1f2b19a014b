// FRAME and IFRAME elements.
define('IHTMLFrameBase2', {
  get_contentWindow: (frame) => (frame.contentWindow ? frameReference('frame', frame) : null),
});
