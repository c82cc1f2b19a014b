"""The real program and a real page, through the fixture that the package brings."""
import pathlib

import pytest
import quillmate

PAGE = """<!DOCTYPE html><meta charset=utf-8><title>P</title><p id=p>caf\u00e9</p>
<input id=i value=x><table id=t><tr><td>A</td></tr></table>"""


@pytest.fixture
def opened(page, tmp_path):
    path = tmp_path / "page.html"
    path.write_text(PAGE, encoding="utf-8")
    page.open("file:///" + ("Z:" if path.as_posix().startswith("/") else "") + path.as_posix())
    return page


def test_drives_a_page(opened):
    assert opened.gettext("id=p") == "caf\u00e9"
    opened.type_m("id=i", "\u00fc\u20ac")
    assert opened.getcontrolinfo("id=i")["text"] == "\u00fc\u20ac"
    assert opened.gettable("id=t") == [[0], ["A"]]
    assert opened.getelementcount("id=i") == 1
    assert opened.haselement("id=none") is False
    opened.scroll((0, 1))
    assert opened.hello["commands"].keys() == {name for name in vars(quillmate._commands.Commands)
                                               if not name.startswith("_")} - {"call"}


def test_keeps_a_picture_of_a_failure(opened):
    with pytest.raises(quillmate.Failure) as raised:
        opened.gettext("id=none")
    assert raised.value.picture.endswith(".png")


def test_bounds_a_call(opened):
    with pytest.raises(quillmate.Failure, match="no answer within 1 s"):
        opened.waitshow("id=none", time_out=1)
