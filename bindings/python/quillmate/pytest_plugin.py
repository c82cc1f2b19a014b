"""For pytest: the fixture `page`, a session for each test.

Options: --quillmate-player, --quillmate-shots. A test that a command fails has the command's picture in its report.
"""
from typing import Generator, Iterator

import pytest

from ._session import Browser, Failure


def pytest_addoption(parser: pytest.Parser) -> None:
    group = parser.getgroup("quillmate")
    group.addoption("--quillmate-player", help="quillmate-play.exe, if not the one in the package")
    group.addoption("--quillmate-shots", help="folder for a picture after each failed command")


@pytest.fixture
def page(request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory) -> Iterator[Browser]:
    """A browser session. The browsers that the test opens are closed after it."""
    shots = request.config.getoption("--quillmate-shots") or tmp_path_factory.mktemp("quillmate")
    with Browser(player=request.config.getoption("--quillmate-player"), shots=shots) as browser:
        yield browser


@pytest.hookimpl(hookwrapper=True)  # type: ignore[misc]
def pytest_runtest_makereport(item: pytest.Item, call: "pytest.CallInfo[None]") -> Generator[None, None, None]:
    outcome = yield
    error = call.excinfo.value if call.excinfo is not None else None
    if isinstance(error, Failure) and error.picture:
        outcome.get_result().sections.append(("Picture of the browser", error.picture))  # type: ignore[attr-defined]
