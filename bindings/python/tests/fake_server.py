"""A program that serves commands from a table, for tests of the conversation alone."""
import json
import sys
import time


def say(**answer):
    print(json.dumps(answer), flush=True)


ANSWERS = {"gettable": [[0], ["a"]], "haselement": False}

if "--no-hello" in sys.argv:
    sys.exit("cannot load quillmate.dll")
say(hello="quillmate", protocol=7 if "--newer" in sys.argv else 1, commands={})
for line in sys.stdin:
    request = json.loads(line)
    command = request.pop("command")
    if command == "refresh":
        say(id=None, success=False, result=0, log="refresh: the library crashed", crashed=True)
        sys.exit(1)
    if command == "quit":
        sys.exit(1)
    if command == "waitshow":
        time.sleep(60)
    if command == "click":
        say(id=None, success=False, result=0, log="Element not found!", picture="C:\\a.png", notes=["note"])
        continue
    if command == "back":
        say(id=None, success=False, error="no", line=1, column=2)
        continue
    say(id=None, success=True, result=ANSWERS.get(command, json.dumps(request, ensure_ascii=False)), log="")
