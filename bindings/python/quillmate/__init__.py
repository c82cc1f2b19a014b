"""Drives Internet Explorer pages.

    import quillmate

    with quillmate.Browser() as page:
        page.open("file:///C:/order.html")
        page.click("id=ok")
        print(page.gettext("id=total"))
"""
from ._session import Browser, Failure
from ._version import VERSION as __version__

__all__ = ["Browser", "Failure", "__version__"]
