#!/usr/bin/python3
"""The web map of twenty yearly snapshots of the sixteen-race game on the
huge map (955 planets), in headless Chromium: how long `veltro-cli site`
takes and what it writes per year, then in the page, from opening
index.html to a map that answers the pointer (the page's "map-ready" mark),
and how long one pointer move takes to update the readout, timed in the
page with performance.now() over a few thousand moves.

usage: bench/web-map-bench.py [BUILD_DIR] [--moves N] [--opens N]
"""

import argparse
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

here = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(here.parent / "tests" / "web"))
from browser import Browser  # noqa: E402

# Moves the pointer over random points of the map box, each a pointermove
# event as the browser sends it, and times the page's handling of each.
MOVES = """
const [count] = arguments;
const map = document.getElementById("map");
const box = map.getBoundingClientRect();
const times = [];
let seed = 1;
const random = () => (seed = (seed * 16807) % 2147483647) / 2147483647;
for (let i = 0; i < count; i++) {
  const event = new PointerEvent("pointermove", { bubbles: true, clientX: box.left + random() * box.width,
                                                  clientY: box.top + random() * box.height });
  const start = performance.now();
  map.dispatchEvent(event);
  times.push(performance.now() - start);
}
return times;
"""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", nargs="?", default="build")
    parser.add_argument("--moves", type=int, default=5000)
    parser.add_argument("--opens", type=int, default=10)
    options = parser.parse_args()
    build = pathlib.Path(options.build).resolve()
    maps = here.parent / "tests" / "data" / "maps"

    with tempfile.TemporaryDirectory(prefix="veltro-web-bench-") as scratch:
        root = pathlib.Path(scratch)
        subprocess.run([build / "tools" / "veltro-gamegen", "--map", maps / "huge-packed-00001.map", "--players",
                        "16", "--turns", "20", "--year", "2450", "--out", root / "turns"], check=True,
                       capture_output=True)
        snapshots = sorted(str(p) for p in (root / "turns").glob("*/GAME.map"))
        start = time.monotonic()
        subprocess.run([build / "src" / "cli" / "veltro-cli", "site", *snapshots, "-o", root / "site"], check=True,
                       capture_output=True)
        seconds = time.monotonic() - start
        size = sum(f.stat().st_size for f in (root / "site").rglob("*") if f.is_file())
        print(f"site, 20 years, every view       {seconds:6.2f} s")
        print(f"written per year                 {size / 20 / 1e6:6.2f} MB")

        browser = Browser()
        try:
            driver = browser.driver
            ready = []
            for _ in range(options.opens):
                driver.get((root / "site" / "index.html").as_uri())
                while not driver.execute_script("return performance.getEntriesByName('map-ready').length"):
                    time.sleep(0.01)
                ready.append(driver.execute_script("return performance.getEntriesByName('map-ready')[0].startTime"))
            times = sorted(driver.execute_script(MOVES, options.moves))
            print(f"open to a map that answers: first {ready[0]:.0f} ms, median of the next {len(ready) - 1}: "
                  f"{statistics.median(ready[1:]):.0f} ms")
            print(f"pointer move, {len(times)} moves: mean {statistics.mean(times):.3f} ms, "
                  f"median {statistics.median(times):.3f} ms, 99th percentile {times[len(times) * 99 // 100]:.3f} ms, "
                  f"longest {times[-1]:.3f} ms")
        finally:
            browser.close()


if __name__ == "__main__":
    main()
