"""The conversation with the program, with a program of the tests' own."""
import pathlib
import sys
import time

import pytest
import quillmate

FAKE = [sys.executable, str(pathlib.Path(__file__).with_name("fake_server.py"))]


@pytest.fixture
def browser():
    with quillmate.Browser(player=FAKE, close_browsers=False) as session:
        yield session


@pytest.mark.parametrize("call, sent", [
    (lambda b: b.gettext("id=\u00e9"), '{"target": "id=\u00e9"}'),
    (lambda b: b.getelementpos("id=a", "center"), '{"target": "id=a", "area": "center"}'),
    (lambda b: b.executescript(value="1"), '{"value": "1"}'),
    (lambda b: b.getattribute("id=a", value="title"), '{"target": "id=a", "value": "title"}'),
    (lambda b: b.pagesource(), "{}"),
    (lambda b: b.call("x", {"a": (3, -4), "b": True, "c": None, "d": 7}), '{"a": "3,-4", "b": "True", "d": "7"}'),
])
def test_sends_each_parameter_as_a_text(browser, call, sent):
    assert call(browser) == sent


def test_returns_python_values(browser):
    assert browser.gettable("id=t") == [[0], ["a"]]
    assert browser.haselement("id=t") is False
    assert browser.type_m("id=a", "x") is None


def test_raises_what_failed(browser):
    with pytest.raises(quillmate.Failure) as raised:
        browser.click("id=a", manual_click=True)
    failure = raised.value
    assert (failure.command, failure.message) == ("click", "Element not found!")
    assert failure.parameters == {"target": "id=a", "manual-click": "True"}
    assert (failure.picture, failure.notes, failure.timed_out) == ("C:\\a.png", ["note"], False)
    assert str(failure) == "click(target='id=a', manual-click='True'): Element not found! (picture: C:\\a.png)"
    with pytest.raises(quillmate.Failure, match="back.*no"):
        browser.back()


def test_ends_the_program_when_a_call_takes_too_long(browser):
    start = time.monotonic()
    with pytest.raises(quillmate.Failure, match="no answer within 0.2 s; the program was ended") as raised:
        browser.waitshow("id=a", time_out=0.2)
    assert raised.value.timed_out
    assert time.monotonic() - start < 10
    assert browser._process.returncode is not None
    with pytest.raises(quillmate.Failure, match="the program was ended"):
        browser.pagesource()


def test_says_how_the_program_ended(browser):
    with pytest.raises(quillmate.Failure, match="the library crashed"):
        browser.refresh()
    with pytest.raises(quillmate.Failure, match="the library crashed"):
        browser.pagesource()
    with quillmate.Browser(player=FAKE) as other:
        with pytest.raises(quillmate.Failure, match="ended with exit code 1"):
            other.quit()


@pytest.mark.parametrize("words, message", [
    ([*FAKE, "--no-hello"], "exit code 1: cannot load quillmate.dll"),
    ([*FAKE, "--newer"], "protocol 7, not 1"),
    (["/no/such/program"], "cannot start /no/such/program"),
])
def test_says_why_no_session_begins(words, message):
    with pytest.raises(quillmate.Failure, match=message):
        quillmate.Browser(player=words)


def test_is_over_at_its_end():
    session = quillmate.Browser(player=FAKE)
    session.end()
    session.end()
    assert session._process.returncode == 0
    with pytest.raises(quillmate.Failure, match="has ended"):
        session.pagesource()
