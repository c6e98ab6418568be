#!/usr/bin/env python3
"""The interactive prompt of kiv, driven through a pseudo-terminal as a
person would: banner, a bare expression printed, help and list, Tab
completion, Ctrl-C dropping the line only, history kept across sessions,
exit and Ctrl-D.  Usage: prompt_test.py KIV"""
import os
import pty
import select
import sys
import tempfile
import time

KIV = sys.argv[1]
failures = []


class Session:
    def __init__(self, state):
        env = dict(os.environ, XDG_STATE_HOME=state, TERM="xterm", HOME=state)
        self.pid, self.fd = pty.fork()
        if self.pid == 0:
            os.execve(KIV, [KIV, "--now", "2026-03-15 14:05:09"], env)
        self.seen = ""

    def wait_for(self, text, timeout=10.0):
        """Reads until `text` has appeared after what was already consumed."""
        end = time.time() + timeout
        while text not in self.seen:
            left = end - time.time()
            if left <= 0 or not select.select([self.fd], [], [], left)[0]:
                return False
            try:
                chunk = os.read(self.fd, 4096)
            except OSError:
                return False
            if not chunk:
                return False
            self.seen += chunk.decode("utf-8", "replace")
        self.seen = self.seen[self.seen.index(text) + len(text):]
        return True

    def ready(self):
        """Waits for the prompt: keys sent earlier could reach the terminal
        before the line editor has taken it over."""
        ok = self.wait_for("kiv> ")
        time.sleep(0.2)
        return ok

    def send(self, keys):
        os.write(self.fd, keys.encode())

    def status(self, timeout=10.0):
        end = time.time() + timeout
        while time.time() < end:
            pid, status = os.waitpid(self.pid, os.WNOHANG)
            if pid:
                return os.waitstatus_to_exitcode(status)
            try:  # keep the terminal drained
                if select.select([self.fd], [], [], 0.1)[0]:
                    os.read(self.fd, 4096)
            except OSError:
                pass
        os.kill(self.pid, 9)
        return None


def expect(what, ok):
    if not ok:
        failures.append(what)


with tempfile.TemporaryDirectory() as state:
    s = Session(state)
    expect("banner", s.wait_for("type help, list, or a line; Ctrl-D to leave") and s.ready())
    s.send('x = "ab"\r')
    s.send("x\r")
    expect("a bare expression is printed", s.wait_for('String "ab"'))
    s.send("PoniADes x, 4\r? x\r")
    expect("statement-form call", s.wait_for('String "ab"'))
    # Ctrl-C drops the half-typed line; the session goes on.
    s.ready()
    s.send("? Repl(3, \x03")
    s.send("? Len(x)\r")
    expect("Ctrl-C keeps the session", s.wait_for("Long 2"))
    # Tab: an operation's name and a variable's name.
    s.send("? Num2L\t(1)\r")
    expect("Tab completes an operation", s.wait_for('String "uno/00"'))
    s.send("longname = 7\r? longn\t\r")
    expect("Tab completes a variable", s.wait_for("Integer 7"))
    s.send("help FmtNum\r")
    expect("help NAME", s.wait_for("FmtNum(") and s.wait_for("Parameters:"))
    s.send("help\r")
    expect("help", s.wait_for("help NAME"))
    s.send("list Pipe2STR\r")
    expect("list WORD", s.wait_for("Pipe2STRows("))
    s.send("? FmtNum(\r")
    expect("a parse error shows the place", s.wait_for("^"))
    s.send("exit\r")
    expect("exit leaves with status 0", s.status() == 0)

    history = os.path.join(state, "kiv", "history")
    expect("history kept under XDG_STATE_HOME", os.path.exists(history) and "longname" in open(history).read())

    # A second session finds the history: Up brings back the last line.
    s = Session(state)
    expect("second banner", s.wait_for("Ctrl-D to leave") and s.ready())
    s.send("\x1b[A\x1b[A\r")  # the last line was "exit"
    expect("history across sessions", s.wait_for("FmtNum("))
    s.send("quit\r")
    expect("quit", s.status() == 0)

    s = Session(state)
    expect("third banner", s.wait_for("Ctrl-D to leave") and s.ready())
    s.send("\x04")
    expect("Ctrl-D leaves with status 0", s.status() == 0)

if failures:
    print("prompt: failed: " + "; ".join(failures))
    sys.exit(1)
print("prompt: all passed")
