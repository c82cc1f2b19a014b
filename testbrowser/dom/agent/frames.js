// FRAME and IFRAME elements.
const contentWindow = (frame) => (frame.contentWindow ? frameReference('frame', frame) : null);

function contentDocument(frame) {
  if (frame.contentWindow && !frame.contentDocument) throw new ComError(E_ACCESSDENIED);
  return frame.contentDocument;
}

const attributeText = (name) => (frame) => textOrNull(frame.getAttribute(name));

const SCROLLING = /^(yes|no|auto)$/i;

define('IHTMLFrameBase', {
  get_src: attributeText('src'),
  put_src(frame, url) {
    frame.src = url;
  },
  get_name: attributeText('name'),
  put_name(frame, name) {
    frame.name = name;
  },
  get_scrolling: (frame) => frame.getAttribute('scrolling') || 'auto',
  put_scrolling(frame, scrolling) {
    if (!SCROLLING.test(scrolling)) throw new ComError(E_INVALIDARG);
    frame.scrolling = scrolling;
  },
  get_frameBorder: attributeText('frameborder'),
  put_frameBorder: (frame, border) => frame.setAttribute('frameborder', border),
});
define('IHTMLFrameBase2', { get_contentWindow: contentWindow, get_readyState: () => 'complete' });
for (const name of ['IHTMLFrameElement3', 'IHTMLIFrameElement3']) {
  define(name, { get_contentDocument: contentDocument, get_src: attributeText('src') });
}
for (const name of ['IHTMLFrameElement', 'IHTMLIFrameElement']) {
  define(name, {
    get_width: (frame) => attributeText('width')(frame),
    get_height: (frame) => attributeText('height')(frame),
  });
}
