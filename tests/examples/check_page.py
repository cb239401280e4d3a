#!/usr/bin/python3
"""Opens a local HTML page in headless Chromium and checks it as a reader sees it.

The page passes when every <img> has loaded (complete, natural width above 0),
the page holds at least --min-images pictures, its text contains each
--expect-text string, and nothing was reported as an error while it loaded:
no console.error, no uncaught exception, no failed resource load or other
error-level browser log entry.

Chromium is driven over its DevTools protocol on a pipe (file descriptors 3
and 4 in the browser, messages separated by NUL bytes), so nothing listens on
a port and only the standard library is needed.

  check_page.py PAGE.html [--min-images N] [--expect-text TEXT]... [--timeout SECONDS]
                [--chromium PATH]

Exit status 0 when the page passes, 1 when it does not, 2 when the browser
could not be run.
"""

import argparse
import json
import os
import pathlib
import select
import shutil
import subprocess
import sys
import tempfile
import time

# Flags for a closed network and a root user: no sandbox, no GPU, and none of
# the background services that would try to reach the outside.
CHROMIUM_FLAGS = [
    "--headless",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--disable-extensions",
    "--disable-default-apps",
    "--mute-audio",
    "--remote-debugging-pipe",
]


class Browser:
    """One Chromium process and the protocol pipe to it."""

    def __init__(self, executable, profile, deadline):
        self.log_path = pathlib.Path(profile) / "chromium.log"
        self.deadline = deadline
        self.next_id = 0
        self.pending = b""
        self.events = []
        to_browser_r, self.to_browser = os.pipe()
        self.from_browser, from_browser_w = os.pipe()
        keep = (to_browser_r, from_browser_w)

        def child_fds():
            # The browser expects its end of the pipe on descriptors 3 and 4.
            # Copy both out of the way first, in case one of them is 3 or 4.
            r, w = os.dup(keep[0]), os.dup(keep[1])
            os.dup2(r, 3)
            os.dup2(w, 4)

        log = open(self.log_path, "wb")
        self.proc = subprocess.Popen(
            [executable, *CHROMIUM_FLAGS, f"--user-data-dir={profile}", "about:blank"],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=log,
            close_fds=False,
            preexec_fn=child_fds,
        )
        log.close()
        os.close(to_browser_r)
        os.close(from_browser_w)

    def send(self, method, params=None, session=None):
        """Sends one command and returns its result; events that arrive in the
        meantime are kept for wait_for and events_of."""
        self.next_id += 1
        message = {"id": self.next_id, "method": method, "params": params or {}}
        if session:
            message["sessionId"] = session
        os.write(self.to_browser, json.dumps(message).encode() + b"\0")
        while True:
            reply = self._read()
            if reply.get("id") == self.next_id:
                if "error" in reply:
                    raise RuntimeError(f"{method}: {reply['error']}")
                return reply.get("result", {})
            self.events.append(reply)

    def wait_for(self, method, session):
        while True:
            for i, event in enumerate(self.events):
                if event.get("method") == method and event.get("sessionId") == session:
                    return self.events.pop(i)
            self.events.append(self._read())

    def drain(self, seconds):
        """Collects the events that arrive within the given time."""
        end = min(time.monotonic() + seconds, self.deadline)
        while True:
            left = end - time.monotonic()
            if left <= 0 or not select.select([self.from_browser], [], [], left)[0]:
                return
            self.events.append(self._read())

    def _read(self):
        while b"\0" not in self.pending:
            left = self.deadline - time.monotonic()
            if left <= 0 or not select.select([self.from_browser], [], [], left)[0]:
                raise TimeoutError("the browser did not answer in time")
            chunk = os.read(self.from_browser, 1 << 16)
            if not chunk:
                log = self.log_path.read_text(errors="replace").strip().splitlines()[-5:]
                raise RuntimeError("the browser closed its pipe: " + " | ".join(log))
            self.pending += chunk
        message, self.pending = self.pending.split(b"\0", 1)
        return json.loads(message)

    def close(self):
        try:
            self.send("Browser.close")
        except Exception:
            pass
        try:
            self.proc.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.proc.kill()
            self.proc.wait()
        os.close(self.to_browser)
        os.close(self.from_browser)


def problems_in(events, session):
    """The error-level messages among the collected events."""
    found = []
    for event in events:
        if event.get("sessionId") != session:
            continue
        method, params = event.get("method"), event.get("params", {})
        if method == "Runtime.consoleAPICalled" and params.get("type") in ("error", "assert"):
            text = " ".join(str(a.get("value", a.get("description", ""))) for a in params.get("args", []))
            found.append(f"console.{params['type']}: {text}")
        elif method == "Runtime.exceptionThrown":
            details = params.get("exceptionDetails", {})
            text = details.get("exception", {}).get("description") or details.get("text", "")
            found.append(f"uncaught exception: {text}")
        elif method == "Log.entryAdded" and params.get("entry", {}).get("level") == "error":
            entry = params["entry"]
            found.append(f"{entry.get('source', 'log')} error: {entry.get('text', '')} {entry.get('url', '')}".strip())
    return found


PAGE_SCRIPT = """
JSON.stringify({
  images: Array.from(document.images, img => ({
    src: img.getAttribute('src'),
    complete: img.complete,
    width: img.naturalWidth,
    height: img.naturalHeight,
  })),
  text: document.body ? document.body.innerText : '',
})
"""


def check(page, executable, min_images, expected_texts, timeout):
    deadline = time.monotonic() + timeout
    with tempfile.TemporaryDirectory(prefix="pxl-chromium-") as profile:
        browser = Browser(executable, profile, deadline)
        try:
            target = browser.send("Target.createTarget", {"url": "about:blank"})["targetId"]
            session = browser.send("Target.attachToTarget", {"targetId": target, "flatten": True})["sessionId"]
            for domain in ("Page", "Runtime", "Log"):
                browser.send(f"{domain}.enable", session=session)
            browser.send("Page.navigate", {"url": page.as_uri()}, session=session)
            browser.wait_for("Page.loadEventFired", session)
            # Messages logged by the last pictures to decode can trail the
            # load event by a moment.
            browser.drain(0.5)
            result = browser.send("Runtime.evaluate", {"expression": PAGE_SCRIPT, "returnByValue": True},
                                  session=session)
            seen = json.loads(result["result"]["value"])
            images = seen["images"]
            problems = problems_in(browser.events, session)
        finally:
            browser.close()

    failures = [f"picture did not load: {img['src']}" for img in images
                if not img["complete"] or img["width"] <= 0]
    if len(images) < min_images:
        failures.append(f"expected at least {min_images} pictures, the page has {len(images)}")
    failures += [f"text not on the page: {text!r}" for text in expected_texts if text not in seen["text"]]
    failures += problems
    loaded = sum(1 for img in images if img["complete"] and img["width"] > 0)
    print(f"{page}: {loaded} of {len(images)} pictures loaded, {len(problems)} error message(s)")
    for failure in failures:
        print("  " + failure)
    return not failures


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("page", type=pathlib.Path)
    parser.add_argument("--min-images", type=int, default=1)
    parser.add_argument("--expect-text", action="append", default=[])
    parser.add_argument("--timeout", type=float, default=45.0)
    parser.add_argument("--chromium", default=shutil.which("chromium") or "/usr/bin/chromium")
    args = parser.parse_args()

    page = args.page.resolve()
    if not page.is_file():
        print(f"error: {page} does not exist", file=sys.stderr)
        return 2
    if not os.access(args.chromium, os.X_OK):
        print(f"error: no Chromium at {args.chromium} (scripts/setup.sh installs Debian's chromium)",
              file=sys.stderr)
        return 2
    try:
        return 0 if check(page, args.chromium, args.min_images, args.expect_text, args.timeout) else 1
    except (TimeoutError, RuntimeError) as error:
        print(f"error: {error}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
