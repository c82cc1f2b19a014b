"""A session: the program that serves commands, and the conversation with it."""
import json
import os
import pathlib
import queue
import shlex
import shutil
import subprocess
import tempfile
import threading
from types import TracebackType
from typing import IO, Any, Dict, List, Mapping, Optional, Sequence, Type, Union

from ._commands import Commands, Value

PROTOCOL = 1
PROGRAM = "quillmate-play.exe"
START_TIME_OUT = 60.0  # seconds
END_TIME_OUT = 30.0  # closing browsers takes its time


class Failure(Exception):
    """A command that failed, or a session that ended.

    command: its name; "" when no session could be begun.
    parameters: as they were sent.
    message: why it failed.
    picture: the path of a picture of the browser, when the session keeps pictures.
    notes: what the library wrote for debuggers meanwhile, for instance the text of a message box.
    timed_out: whether the call took longer than its time-out. The program has been ended then.
    """

    def __init__(self, command: str, parameters: Mapping[str, str], message: str, *, picture: Optional[str] = None,
                 notes: Sequence[str] = (), timed_out: bool = False) -> None:
        super().__init__(command, message)
        self.command = command
        self.parameters = dict(parameters)
        self.message = message
        self.picture = picture
        self.notes = list(notes)
        self.timed_out = timed_out

    def __str__(self) -> str:
        given = ", ".join(f"{name}={value!r}" for name, value in self.parameters.items())
        text = f"{self.command}({given}): {self.message}" if self.command else self.message
        return text + (f" (picture: {self.picture})" if self.picture else "")


def _player(given: Union[str, "os.PathLike[str]", Sequence[str], None]) -> List[str]:
    """The words that start the program: those given, the environment's, the program packed here, or the path's."""
    if isinstance(given, (str, os.PathLike)):
        return [os.fspath(given)]
    if given is not None:
        return list(given)
    if "QUILLMATE_PLAYER" in os.environ:
        return shlex.split(os.environ["QUILLMATE_PLAYER"], posix=os.name == "posix")
    packed = pathlib.Path(__file__).with_name("bin") / PROGRAM
    if packed.exists():
        return [str(packed)]
    found = shutil.which(PROGRAM)
    if found is None:
        raise Failure("", {}, f"{PROGRAM} is not in this package and not on the path: give its path as player")
    return [found]


def _text(value: Value) -> str:
    if isinstance(value, tuple):
        return ",".join(map(str, value))
    return str(value)


class Browser(Commands):
    """A session of its own: one current surface, one set of selected frames.

    player: quillmate-play.exe, or the words of a command line that starts it. Without one, the words in the
    environment's QUILLMATE_PLAYER, the program in this package, or the one on the path.
    shots: a folder for a picture after each failure.
    close_browsers: whether the browsers that the session opens are closed at its end, whatever ends it.
    dll: another library than the one beside the program.
    time_out: seconds that a call may take unless it says otherwise; None for as long as the command takes.
    """

    def __init__(self, *, player: Union[str, "os.PathLike[str]", Sequence[str], None] = None,
                 shots: Union[str, "os.PathLike[str]", None] = None, close_browsers: bool = True,
                 dll: Union[str, "os.PathLike[str]", None] = None, time_out: Optional[float] = None) -> None:
        words = [*_player(player), "--serve"]
        if shots is not None:
            words += ["--shots", os.fspath(shots)]
        if close_browsers:
            words.append("--close-browsers")
        if dll is not None:
            words += ["--dll", os.fspath(dll)]
        self._time_out = time_out
        self._lock = threading.Lock()
        self._over: Optional[str] = None
        self._errors: IO[bytes] = tempfile.TemporaryFile()
        try:
            self._process = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self._errors)
        except OSError as error:
            self._errors.close()
            raise Failure("", {}, f"cannot start {words[0]}: {error.strerror}") from error
        self._lines: "queue.Queue[Optional[bytes]]" = queue.Queue()
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self.hello = self._first_line()

    def __enter__(self) -> "Browser":
        return self

    def __exit__(self, kind: Optional[Type[BaseException]], error: Optional[BaseException],
                 trace: Optional[TracebackType]) -> None:
        self.end()

    def call(self, command: str, parameters: Optional[Mapping[str, Value]] = None, *,
             time_out: Optional[float] = None) -> Any:
        """Carries out a command by its name and returns its result. Parameters that are None are left out."""
        given = {name: _text(value) for name, value in (parameters or {}).items() if value is not None}
        with self._lock:
            if self._over is not None:
                raise Failure(command, given, self._over)
            answer = self._ask(command, given, time_out if time_out is not None else self._time_out)
        if answer["success"]:
            return answer["result"]
        raise Failure(command, given, answer.get("error") or answer["log"], picture=answer.get("picture"),
                      notes=answer.get("notes", ()))

    def end(self) -> None:
        """Ends the session. Later calls fail."""
        with self._lock:
            if self._over is None:
                self._finish("the session has ended", END_TIME_OUT)

    def _ask(self, command: str, given: Dict[str, str], time_out: Optional[float]) -> Dict[str, Any]:
        assert self._process.stdin is not None
        line = json.dumps({"command": command, **given}, ensure_ascii=False).encode() + b"\n"
        try:
            self._process.stdin.write(line)
            self._process.stdin.flush()
            answer = self._lines.get(timeout=time_out)
        except OSError:
            answer = None
        except queue.Empty:
            message = f"no answer within {time_out:g} s; the program was ended"
            self._finish(message, 0)
            raise Failure(command, given, message, timed_out=True) from None
        if answer is None:
            raise Failure(command, given, self._died())
        found: Dict[str, Any] = json.loads(answer)
        if found.get("crashed"):
            self._finish(found["log"], END_TIME_OUT)
        return found

    def _first_line(self) -> Dict[str, Any]:
        try:
            line = self._lines.get(timeout=START_TIME_OUT)
        except queue.Empty:
            self._finish("the program does not say hello", 0)
            raise Failure("", {}, "the program does not say hello") from None
        if line is None:
            raise Failure("", {}, self._died())
        hello: Dict[str, Any] = json.loads(line)
        if hello.get("protocol") != PROTOCOL:
            self._finish("", END_TIME_OUT)
            raise Failure("", {}, f"the program speaks protocol {hello.get('protocol')}, not {PROTOCOL}")
        return hello

    def _read(self) -> None:
        assert self._process.stdout is not None
        for line in self._process.stdout:
            self._lines.put(line)
        self._lines.put(None)

    def _died(self) -> str:
        code = self._process.wait()
        self._errors.seek(0)
        said = self._errors.read().decode(errors="replace").strip()
        message = f"the program ended with exit code {code}" + (f": {said}" if said else "")
        self._finish(message, END_TIME_OUT)
        return message

    def _finish(self, why: str, patience: float) -> None:
        """Closes the program's input and, when it is not gone in time, ends it."""
        self._over = why
        assert self._process.stdin is not None and self._process.stdout is not None
        try:
            self._process.stdin.close()
        except OSError:
            pass  # it no longer reads
        for end in (lambda: None, self._process.terminate, self._process.kill):
            end()
            try:
                self._process.wait(patience)
                break
            except subprocess.TimeoutExpired:
                patience = 5.0
        self._reader.join(5.0)
        if not self._reader.is_alive():
            self._process.stdout.close()
        self._errors.close()
