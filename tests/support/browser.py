"""A page in headless Chromium, driven by chromedriver's WebDriver protocol."""

import base64
import json
import pathlib
import re
import subprocess
import tempfile
import time
import urllib.error
import urllib.request

CHROMIUM = "/usr/bin/chromium"
DRIVER = "/usr/bin/chromedriver"
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
KEYS = {"ArrowLeft": "\ue012", "ArrowUp": "\ue013", "ArrowRight": "\ue014", "ArrowDown": "\ue015",
        "End": "\ue010", "Home": "\ue011", "PageUp": "\ue00e", "PageDown": "\ue00f",
        "Enter": "\ue007", "Escape": "\ue00c", "Tab": "\ue004"}


class BrowserError(Exception):
    """What the browser refused, by the protocol's name: "no such alert"."""


class Browser:
    """Used in a with statement, which ends the browser."""

    def __init__(self, width=1280, height=800):
        self._folder = tempfile.TemporaryDirectory(prefix="tally_browser_")
        folder = pathlib.Path(self._folder.name)
        self._driver = subprocess.Popen([DRIVER, "--port=0"], stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, text=True)
        self._session = ""
        self._opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        self._address = f"http://127.0.0.1:{self._port()}"
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--disable-background-networking", "--hide-scrollbars",
                     f"--window-size={width},{height}", f"--user-data-dir={folder / 'profile'}"]
        try:
            answer = self._call("POST", "/session", {"capabilities": {"alwaysMatch": {
                "browserName": "chrome",
                "goog:loggingPrefs": {"browser": "ALL"},
                "goog:chromeOptions": {"binary": CHROMIUM, "args": arguments}}}})
        except BaseException:
            self._end()
            raise
        self._session = f"/session/{answer['sessionId']}"

    def _port(self):
        for line in self._driver.stdout:
            if found := re.search(r"successfully on port (\d+)", line):
                return int(found[1])
        raise BrowserError("chromedriver did not start")

    def _end(self):
        self._driver.terminate()
        self._driver.wait(30)
        self._driver.stdout.close()
        self._folder.cleanup()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self._call("DELETE", "")
        finally:
            self._end()

    def _call(self, method, path, body=None):
        request = urllib.request.Request(
            self._address + self._session + path, method=method,
            data=None if body is None else json.dumps(body).encode(),
            headers={"Content-Type": "application/json"})
        try:
            with self._opener.open(request, timeout=240) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as fault:
            value = json.load(fault)["value"]
            raise BrowserError(f"{value['error']}: {value['message'][:400]}") from None

    def open(self, file):
        self._call("POST", "/url", {"url": pathlib.Path(file).resolve().as_uri()})

    def run(self, script, *arguments):
        """The value of a function body."""
        return self._call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def run_async(self, script, *arguments):
        """What the body hands to its last argument, a function."""
        return self._call("POST", "/execute/async", {"script": script, "args": list(arguments)})

    def texts(self, selector):
        """Of all elements that the selector finds."""
        return self.run("return [...document.querySelectorAll(arguments[0])]"
                        ".map((element) => element.textContent);", selector)

    def element(self, selector):
        return self._call("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def click(self, selector):
        self._call("POST", f"/element/{self.element(selector)}/click", {})

    def press(self, *names):
        """Keys by name or character, to what has the focus."""
        actions = []
        for name in names:
            key = KEYS.get(name, name)
            actions += [{"type": "keyDown", "value": key}, {"type": "keyUp", "value": key}]
        self._call("POST", "/actions", {"actions": [{"type": "key", "id": "keys",
                                                     "actions": actions}]})

    def wait_for(self, script, *arguments):
        """Runs until the value is true; an error after ten seconds."""
        end = time.monotonic() + 10
        while not self.run(script, *arguments):
            if time.monotonic() > end:
                raise BrowserError(f"never true: {script}")
            time.sleep(0.02)

    def has_dialog(self):
        try:
            self._call("GET", "/alert/text")
        except BrowserError as fault:
            if str(fault).startswith("no such alert"):
                return False
            raise
        return True

    def messages(self):
        """What the page wrote to the console since the last call, faults of scripts included."""
        return [entry["message"] for entry in self._call("POST", "/se/log", {"type": "browser"})]

    def pdf(self, file):
        answer = self._call("POST", "/print", {"background": True, "orientation": "landscape"})
        pathlib.Path(file).write_bytes(base64.b64decode(answer))

    def screenshot(self, file):
        pathlib.Path(file).write_bytes(base64.b64decode(self._call("GET", "/screenshot")))
