"""Headless Chromium, driven through its DevTools protocol over two pipes: no driver, no library.

    with Browser() as browser:
        page = browser.open(path, width=390, dark=True)
        page.evaluate("document.title")
        page.click("th button")
        page.screenshot(target)
"""

import base64
import ctypes
import json
import os
import pathlib
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time

BROWSERS = ("chromium", "chromium-browser", "google-chrome")
OPTIONS = ("--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-background-networking",
           "--disable-component-update", "--disable-sync", "--no-first-run", "--remote-debugging-pipe")
PATIENCE = 400  # seconds; a machine may have much else to do
PR_SET_PDEATHSIG = 1
LIBC = ctypes.CDLL(None)


class BrowserError(Exception):
    pass


class Browser:
    def __init__(self):
        program = next(filter(None, map(shutil.which, BROWSERS)), None)
        if program is None:
            sys.exit("No Chromium found. On Debian: apt-get install chromium")
        self.directory = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        to_browser, self.out = os.pipe()
        self.input, from_browser = os.pipe()

        def hand_over():
            # However this program ends, the browser ends with it; meanwhile others come first.
            LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
            os.nice(5)
            # The protocol is spoken on the descriptors 3 and 4. Both are moved away first, for one may be the other's.
            reading, writing = os.dup(to_browser), os.dup(from_browser)
            high = max(reading, writing, 10)
            os.dup2(reading, high + 1)
            os.dup2(writing, high + 2)
            os.dup2(high + 1, 3)
            os.dup2(high + 2, 4)

        self.process = subprocess.Popen(
            [program, *OPTIONS, f"--user-data-dir={self.directory.name}/profile"], preexec_fn=hand_over,
            close_fds=False, start_new_session=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.number = 0
        self.rest = b""
        self.events = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self.call("Browser.close")
            self.process.wait(PATIENCE)
        except (BrowserError, OSError, subprocess.TimeoutExpired):
            pass
        self.end_processes()
        os.close(self.out)
        os.close(self.input)
        self.directory.cleanup()

    def end_processes(self):
        """Ends the browser and whatever it has started, if anything of it is left."""
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()

    def message(self, deadline):
        while b"\0" not in self.rest:
            left = deadline - time.monotonic()
            ready = select.select([self.input], [], [], left)[0] if left > 0 else []
            piece = os.read(self.input, 1 << 20) if ready else b""
            if not piece:
                raise BrowserError("the browser does not answer")
            self.rest += piece
        text, _, self.rest = self.rest.partition(b"\0")
        if time.monotonic() > deadline:
            raise BrowserError("the browser talks of other things only")
        return json.loads(text)

    def call(self, method, session=None, **parameters):
        self.number += 1
        request = {"id": self.number, "method": method, "params": parameters}
        if session:
            request["sessionId"] = session
        data = json.dumps(request).encode() + b"\0"
        while data:
            data = data[os.write(self.out, data):]
        deadline = time.monotonic() + PATIENCE
        while True:
            message = self.message(deadline)
            if message.get("id") == self.number:
                if "error" in message:
                    raise BrowserError(f"{method}: {message['error']}")
                return message["result"]
            self.events.append(message)

    def await_event(self, is_wanted):
        deadline = time.monotonic() + PATIENCE
        while True:
            for place, message in enumerate(self.events):
                if is_wanted(message):
                    return self.events.pop(place)
            self.events.append(self.message(deadline))

    def open(self, path, **look):
        return Page(self, pathlib.Path(path), **look)


class Page:
    """One page in a tab of its own; `width` in CSS pixels; the script `before` runs before each of the page's own."""

    def __init__(self, browser, path, width=1400, height=900, dark=False, script=True, paper=False, before=""):
        self.browser = browser
        target = browser.call("Target.createTarget", url="about:blank")["targetId"]
        self.target = target
        self.session = browser.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        self.call("Page.enable")
        self.call("Runtime.enable")
        self.call("Log.enable")
        self.call("Page.setLifecycleEventsEnabled", enabled=True)
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                  mobile=width < 600)
        self.call("Emulation.setEmulatedMedia", media="print" if paper else "",
                  features=[{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}])
        if before:
            self.call("Page.addScriptToEvaluateOnNewDocument", source=before)
        if not script:
            self.call("Emulation.setScriptExecutionDisabled", value=True)
        began = time.monotonic()
        # The empty page that was there first may tell late that it is loaded.
        self.await_load(self.call("Page.navigate", url=path.resolve().as_uri())["loaderId"])
        self.seconds = time.monotonic() - began

    def call(self, method, **parameters):
        return self.browser.call(method, self.session, **parameters)

    def is_load(self, message, loader=None):
        told = message.get("params", {})
        return (message.get("method") == "Page.lifecycleEvent" and message.get("sessionId") == self.session
                and told["name"] == "load" and loader in (None, told["loaderId"]))

    def await_load(self, loader=None):
        """Until a page is loaded, of this loader or of any since forget_loads()."""
        self.browser.await_event(lambda message: self.is_load(message, loader))

    def forget_loads(self):
        self.browser.events = [message for message in self.browser.events if not self.is_load(message)]

    def close(self):
        self.browser.call("Target.closeTarget", targetId=self.target)

    def evaluate(self, expression):
        """The value of an expression in the page; a promise is waited for."""
        result = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in result:
            raise BrowserError(json.dumps(result["exceptionDetails"])[:2000])
        return result["result"].get("value")

    def click(self, selector):
        """Clicks into the middle of the first element, as a mouse does."""
        x, y = self.evaluate(f"""(() => {{
            const element = document.querySelector({json.dumps(selector)});
            element.scrollIntoView({{block: 'center', inline: 'center', behavior: 'instant'}});
            const box = element.getBoundingClientRect();
            return [box.x + box.width / 2, box.y + box.height / 2];
        }})()""")
        self.call("Input.dispatchMouseEvent", type="mouseMoved", x=x, y=y)
        for kind in ("mousePressed", "mouseReleased"):
            self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)

    def key(self, name, code, text=""):
        """Presses a key; `text` is what it types, "\\r" for Enter."""
        down = {"type": "keyDown", "text": text} if text else {"type": "rawKeyDown"}
        for event in (down, {"type": "keyUp"}):
            self.call("Input.dispatchKeyEvent", key=name, code=name, windowsVirtualKeyCode=code, **event)

    def complaints(self):
        """What the browser has put down about the page: errors of scripts, breaches of its policy."""
        self.evaluate("1")
        return [message["params"] for message in self.browser.events
                if message.get("sessionId") == self.session
                and message.get("method") in ("Runtime.exceptionThrown", "Log.entryAdded")]

    def screenshot(self, target, whole=True):
        data = self.call("Page.captureScreenshot", captureBeyondViewport=whole, **self.clip() if whole else {})["data"]
        pathlib.Path(target).write_bytes(base64.b64decode(data))

    def clip(self):
        size = self.call("Page.getLayoutMetrics")["cssContentSize"]
        return {"clip": {"x": 0, "y": 0, "width": size["width"], "height": min(size["height"], 8000), "scale": 1}}
