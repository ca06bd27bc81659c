"""Headless Chromium driven by Selenium, as the web map's tests and benchmark
start it: Debian's chromium and chromium-driver, a new empty profile, and none
of the browser's own connections, which would muddle the page's requests in the log."""

import shutil
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

QUIET = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync"]


class Browser:
    """A browser window of the given size that logs its console and its
    network requests; close() ends it and removes its profile."""

    def __init__(self, width=1400, height=1100):
        self.profile = tempfile.mkdtemp(prefix="veltro-chromium-")
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for argument in QUIET + [f"--user-data-dir={self.profile}", f"--window-size={width},{height}"]:
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        try:
            self.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        except Exception:
            shutil.rmtree(self.profile, ignore_errors=True)
            raise

    def close(self):
        self.driver.quit()
        shutil.rmtree(self.profile, ignore_errors=True)
