"""A page at a time in headless Chromium, with what it logs and requests. The interpreter is Debian's, as its Selenium is."""

import json
import os
import shutil
import sys

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
except ImportError:
    print("skipped: python3-selenium is not installed")
    sys.exit(77)
if not shutil.which("chromedriver"):
    print("skipped: chromium-driver is not installed")
    sys.exit(77)

failures = []


def check(condition, text):
    if not condition:
        failures.append(text)
        print(text)


def finish():
    """Ends the test; ctest puts the test's name before its messages."""
    print(f"{len(failures)} failures" if failures else "all is well")
    sys.exit(1 if failures else 0)


class Browser:
    def __init__(self, profile):
        options = webdriver.ChromeOptions()
        for word in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--force-prefers-reduced-motion",
                     "--user-data-dir=" + profile):
            options.add_argument(word)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
        self.command = self.driver.execute_cdp_cmd
        self.name = ""

    def open(self, path, fragment=""):
        self.name = os.path.basename(path)
        self.driver.get("about:blank")
        self.drain()
        self.driver.get("file://" + path + fragment)

    def drain(self):
        return self.driver.get_log("browser"), self.driver.get_log("performance")

    def js(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def all(self, selector):
        return self.driver.find_elements("css selector", selector)

    def one(self, selector):
        return self.driver.find_element("css selector", selector)

    def width(self, pixels, height=900):
        self.command("Emulation.setDeviceMetricsOverride", {"width": pixels, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def colours(self, scheme):
        self.command("Emulation.setEmulatedMedia", {"features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def check(self, condition, text):
        check(condition, f"{self.name}: {text}")

    def check_quiet(self):
        """Nothing in the console, and no request but that of the page."""
        console, traffic = self.drain()
        self.check(not console, f"console: {console[:3]}")
        requests = [entry["message"]["params"]["request"]["url"] for entry in (json.loads(line["message"]) for line in traffic)
                    if entry["message"]["method"] == "Network.requestWillBeSent"]
        others = [url for url in requests if not url.startswith("file://") or not url.split("#")[0].endswith(self.name)]
        self.check(not others, f"requests: {others[:3]}")
