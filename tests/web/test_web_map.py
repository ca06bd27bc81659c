#!/usr/bin/python3
"""The web map in a real browser, opened from disk, against what veltro-cli
planet and render say of the same three-year six-race game, one race and one
planet named as markup. After every case the console is clean and no request
has left the folder."""

import argparse
import base64
import concurrent.futures
import json
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.parse

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.actions.wheel_input import ScrollOrigin
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from browser import Browser  # noqa: E402

# Red Ball moves a light year right of and two below Lynx: the pointer can
# reach both at once, and the later in the table is the one named.
NEIGHBOURS = ("Lynx", "Red Ball")
RACE = "<img src=x onerror=alert(1)>"
PLANET = "</script><b>x"
YEARS = [2440, 2441, 2442]
VIEWS = {"borders": "borders,universe,owned", "territory": "territory,owned", "scanned": "scanned,owned",
         "hab": "hab,universe", "growth": "growth,universe", "attack": "attack,universe"}
CANVAS = 10020
args = None


def edit(path, change):
    """Calls change(rows) on the tab-separated rows of a game file and writes them back."""
    rows = [line.split("\t") for line in path.read_bytes().decode("cp1252").split("\r\n")]
    change(rows)
    path.write_bytes("\r\n".join("\t".join(r) for r in rows).encode("cp1252"))


def move_beside(rows, anchor, name):
    """Puts planet `name` of a map 1 light year right of and 2 below `anchor`."""
    x, y = next((int(r[1]), int(r[2])) for r in rows if len(r) > 3 and r[3] == anchor)
    for r in rows:
        if len(r) > 3 and r[3] == name:
            r[1:3] = [str(x + 1), str(y + 2)]


def rename(rows, column, old, new):
    for r in rows:
        if len(r) > column and r[column] == old:
            r[column] = new


def overlaps(planets):
    """The canvas points where two planets' pick boxes meet: (x, y, rows)."""
    points = []
    for i, (ax, ay, _) in enumerate(planets):
        for j, (bx, by, _) in enumerate(planets[i + 1:], i + 1):
            if abs(ax - bx) <= 80 and abs(ay - by) <= 80:
                points.append(((max(ax, bx) + min(ax, bx) + 40) / 2, (max(ay, by) + min(ay, by) + 40) / 2, (i + 1, j + 1)))
    return points


# Compares pictures by their pixels as the browser decodes them: each
# argument a list of PNG files (base64) laid one over the other. Blobs keep
# the page's security policy out of the test's way.
COMPARE = """
const [shown, expected, done] = arguments;
const decode = (b64) => createImageBitmap(new Blob([Uint8Array.from(atob(b64), (c) => c.charCodeAt(0))]),
                                          { colorSpaceConversion: "none", premultiplyAlpha: "none" });
async function pixels(layers) {
  const bitmaps = await Promise.all(layers.map(decode));
  const canvas = new OffscreenCanvas(bitmaps[0].width, bitmaps[0].height);
  const g = canvas.getContext("2d");
  for (const b of bitmaps) g.drawImage(b, 0, 0);
  return { size: [canvas.width, canvas.height], data: g.getImageData(0, 0, canvas.width, canvas.height).data };
}
Promise.all([pixels(shown), pixels(expected)]).then(([a, b]) => {
  let differ = 0;
  if (a.size[0] !== b.size[0] || a.size[1] !== b.size[1]) return done({ sizes: [a.size, b.size] });
  for (let i = 0; i < a.data.length; i += 4)
    if (a.data[i] !== b.data[i] || a.data[i + 1] !== b.data[i + 1] || a.data[i + 2] !== b.data[i + 2]) differ++;
  done({ sizes: [a.size, b.size], differ });
}, (e) => done({ error: String(e) }));
"""


class WebMapTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory(prefix="veltro-webmap-")
        root = pathlib.Path(cls.scratch.name)
        subprocess.run([args.gamegen, "--map", f"{args.maps}/tiny-packed-00001.map", "--players", "6", "--seed",
                        "3", "--turns", "3", "--year", "2442", "--out", str(root / "turns")],
                       check=True, capture_output=True)
        for year in YEARS:
            turn = root / "turns" / str(year)
            edit(turn / "GAME.map", lambda rows: (move_beside(rows, *NEIGHBOURS), rename(rows, 3, "Nova", PLANET)))
            for report in turn.glob("GAME.P*"):
                edit(report, lambda rows: (rename(rows, 0, "Nova", PLANET), rename(rows, 1, "Wendish", RACE)))
        cls.site = root / "site"
        cls.cli("site", *[str(root / "turns" / str(y) / "GAME.map") for y in YEARS], "-o", str(cls.site))
        cls.renders = root / "renders"
        cls.renders.mkdir()
        cls.years = {y: json.loads((cls.site / f"years/{y}/planets.js").read_text()[len("veltroMap.year("):-3])
                     for y in YEARS}
        cls.browser = Browser()
        cls.driver = cls.browser.driver
        cls.driver.get(cls.site.joinpath("index.html").as_uri())
        cls.wait_until("document.body.dataset.loaded === 'true'")

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.scratch.cleanup()

    def setUp(self):
        self.driver.get_log("browser")
        self.driver.get_log("performance")

    def tearDown(self):
        """Nothing went wrong in the console, and every request stayed in the folder."""
        self.assertEqual([e["message"] for e in self.driver.get_log("browser")], [])
        folder = self.site.as_uri() + "/"
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                self.assertTrue(message["params"]["request"]["url"].startswith(folder), message["params"]["request"]["url"])

    @classmethod
    def cli(cls, *arguments):
        return subprocess.run([args.cli, *arguments], check=True, capture_output=True).stdout

    @classmethod
    def wait_until(cls, condition, timeout=10):
        end = time.monotonic() + timeout
        while not cls.driver.execute_script(f"return {condition}"):
            if time.monotonic() > end:
                raise AssertionError(f"timed out waiting for {condition}")
            time.sleep(0.02)

    def game(self, year):
        return str(pathlib.Path(self.scratch.name) / "turns" / str(year) / "GAME.map")

    def planet(self, year, *options):
        return json.loads(self.cli("planet", self.game(year), "--year", str(year), *options))

    def planets(self, year, options):
        """`planet` for every list of options, two at a time."""
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            return list(pool.map(lambda o: self.planet(year, *o), options))

    def render(self, year, layers, size=800, names=False):
        out = self.renders / f"{year}-{layers}-{size}-{names}.png"
        if not out.exists():
            self.cli("render", self.game(year), "--year", str(year), "--layers", layers, "--size", str(size),
                     *(["--overlay", "names"] if names else []), "-o", str(out))
        return out

    def state(self):
        return self.driver.execute_script("return veltroMap.state()")

    def shown_files(self):
        """The files of the pictures the page shows now, the names last when shown."""
        self.wait_until("[...document.querySelectorAll('#sheet img')].every((i) => i.hidden || i.complete)")
        sources = self.driver.execute_script(
            "return [...document.querySelectorAll('#sheet img')].filter((i) => !i.hidden).map((i) => i.currentSrc)")
        return [pathlib.Path(urllib.parse.unquote(urllib.parse.urlparse(s).path)) for s in sources]

    def assert_shows(self, expected):
        shown = self.shown_files()
        self.assertEqual({f.parent.parent.parent for f in shown}, {self.site})
        encode = lambda f: base64.b64encode(f.read_bytes()).decode()
        result = self.driver.execute_async_script(COMPARE, [encode(f) for f in shown], [encode(expected)])
        self.assertEqual(result.get("differ"), 0, f"{[f.name for f in shown]} against {expected.name}: {result}")

    def client_point(self, year, row, at=None):
        """Where planet `row` (or canvas point `at`) is on the screen now, in client pixels."""
        px, py = at or self.years[year]["planets"][row - 1][:2]
        r = self.driver.execute_script("return document.getElementById('sheet').getBoundingClientRect().toJSON()")
        return r["left"] + px / CANVAS * r["width"], r["top"] + py / CANVAS * r["height"]

    def point_at(self, x, y, click=False):
        """Moves the real pointer to client (x, y), rounded to whole pixels."""
        body = self.driver.find_element(By.TAG_NAME, "body")
        size = body.rect
        actions = ActionChains(self.driver).move_to_element_with_offset(
            body, round(x - size["width"] / 2), round(y - size["height"] / 2))
        (actions.click() if click else actions).perform()

    def go_to_year(self, year):
        self.driver.execute_script("document.getElementById('map').focus()")
        while (now := self.state()["year"]) != year:
            self.driver.switch_to.active_element.send_keys(Keys.ARROW_RIGHT if now < year else Keys.ARROW_LEFT)
            self.wait_until(f"veltroMap.state().year !== {now}")

    def readout(self):
        return self.driver.execute_script(
            "return { XYCoord: document.getElementById('XYCoord').textContent, "
            "theplanet: document.getElementById('theplanet').textContent, "
            "ToolTip: document.getElementById('map').title }")

    def test_readout_follows_the_pointer(self):
        """The real pointer at 100 %, zoomed by the wheel, and dragged: planet --at's readout."""
        self.go_to_year(2441)
        year = self.years[2441]
        rows = list(range(1, len(year["planets"]) + 1, 6))
        seen = []
        for zoom in ("start", "wheel", "drag"):
            if zoom == "wheel":
                ActionChains(self.driver).scroll_from_origin(
                    ScrollOrigin.from_element(self.driver.find_element(By.ID, "map")), 0, -120).perform()
            elif zoom == "drag":
                x, y = self.client_point(2441, rows[0])
                body = self.driver.find_element(By.TAG_NAME, "body")
                ActionChains(self.driver).move_to_element_with_offset(body, 0, 0).click_and_hold() \
                    .move_by_offset(-150, -90).release().perform()
                self.assertNotEqual(self.client_point(2441, rows[0]), (x, y))
            box = self.driver.find_element(By.ID, "map").rect
            between = [self.client_point(2441, 0, p[:2]) for p in overlaps(year["planets"])]
            for x, y in [self.client_point(2441, row) for row in rows] + between:
                if box["x"] < x < box["x"] + box["width"] and box["y"] < y < box["y"] + box["height"]:
                    self.point_at(x, y)
                    seen.append((self.state()["pointer"], self.readout()))
        self.assertGreater(self.state()["zoom"], 1)
        answers = self.planets(2441, [("--at", f"{p['x']!r},{p['y']!r}") for p, _ in seen])
        named = 0
        for (pointer, shown), answer in zip(seen, answers):
            self.assertEqual(shown, {k: answer[k] for k in ("XYCoord", "theplanet", "ToolTip")}, pointer)
            named += shown["theplanet"] != " Deep Space"
        self.assertGreater(named, len(seen) // 2)
        self.assertIn(" " + NEIGHBOURS[1], [shown["theplanet"] for _, shown in seen])

    def test_pick_rule_at_the_edges(self):
        """At the pick box's edges, half a unit either side, half pixels, whole light years: planet --at's."""
        year = self.years[2442]
        scale = year["Scale"]
        points = []
        for px, py, _ in year["planets"][::6]:
            for edge in (-20.5, -20, 60, 60.5):
                points += [((px + edge) / scale, py / scale), (px / scale, (py + edge) / scale)]
            # Whole and half light years, and a half pixel of the 800-pixel map.
            points += [(round(px / scale), round(py / scale)), (round(px / scale) + 0.5, round(py / scale) - 0.5),
                       ((round(px * 800 / CANVAS) + 0.5) * CANVAS / 800 / scale, py / scale)]
        points += [(x / scale, y / scale) for x, y, _ in overlaps(year["planets"])]
        self.go_to_year(2442)
        shown = self.driver.execute_script(
            "return arguments[0].map(([x, y]) => veltroMap.readoutAt(x, y))", points)
        answers = self.planets(2442, [("--at", f"{x!r},{y!r}") for x, y in points])
        for point, page, cli in zip(points, shown, answers):
            self.assertEqual(page, {k: cli[k] for k in ("XYCoord", "theplanet", "ToolTip", "Picked")}, point)
        picked = [len(a["Picked"]) for a in answers]
        self.assertTrue(0 < picked.count(1) < len(answers) and 2 in picked, picked)

    def test_click_shows_the_panel(self):
        """A click shows planet --number's panel on the four tabs, as every other planet's panel is; the
        markup-named race and planet show literally wherever they appear, and nothing of them runs."""
        self.go_to_year(2440)
        self.driver.find_element(By.ID, "zoomWhole").click()
        year = self.years[2440]
        rows = range(1, len(year["planets"]) + 1, 2)
        for row, answer in zip(rows, self.planets(2440, [("--number", str(row)) for row in rows])):
            self.assertEqual(self.driver.execute_script(f"return veltroMap.panel({row})"),
                             {k: answer[k] for k in ("Detail", "RHab", "Pie1", "Pie2")}, row)
        marked = next(i + 1 for i, p in enumerate(year["planets"]) if p[2] == PLANET)
        owned = max(range(1, len(year["planets"]) + 1),
                    key=lambda r: len(self.driver.execute_script(f"return veltroMap.panel({r}).Pie2")))
        x, y, pair = overlaps(year["planets"])[0]
        for row, at in ((marked, None), (owned, None), (pair[1], (x, y))):
            self.point_at(*self.client_point(2440, row, at), click=True)
            # Of two planets under the pointer the later one's panel shows.
            self.assertEqual(self.state()["row"], row)
            expected = self.planet(2440, "--number", str(row))
            for tab in ("tabPlanet", "tabMinerals", "tabPop", "tabHab"):
                self.driver.find_element(By.ID, tab).click()
            cells = self.driver.execute_script(
                "const o = {}; for (const c of document.querySelectorAll('[data-label]')) o[c.dataset.label] = c.textContent;"
                "return o")
            self.assertEqual(cells, expected["Detail"])
            habs = self.driver.execute_script(
                "return [...document.getElementById('habs').rows].map((r) => [r.cells[0].textContent, r.cells[1].textContent])")
            self.assertEqual(habs, [list(p) for p in zip(expected["RName"], expected["RHab"])])
            if row == marked:
                self.assertEqual(self.readout()["theplanet"], " " + PLANET)
        self.assertIn(RACE, self.driver.find_element(By.ID, "races").get_attribute("textContent"))
        self.assertEqual(self.driver.execute_script(
            "return document.querySelectorAll('b, img:not(#picture):not(#nameLayer), script:not([src])').length"), 0)

    def test_views_years_and_names_show_renders_pictures(self):
        """Every view in two years, the names laid over, the year by keys, slider and play, and zoomed
        in the twice-size pictures: each shows exactly what render draws."""
        self.driver.find_element(By.ID, "zoomWhole").click()
        self.assertEqual(self.state()["zoom"], 1)
        for year in (2440, 2442):
            self.go_to_year(year)
            for view, layers in VIEWS.items():
                self.driver.find_element(By.CSS_SELECTOR, f'input[value="{view}"]').click()
                self.assert_shows(self.render(year, layers))
        names = self.driver.find_element(By.ID, "names")
        names.click()
        self.assert_shows(self.render(2442, "attack,universe", names=True))
        self.driver.find_element(By.ID, "zoomIn").click()
        self.driver.find_element(By.ID, "zoomIn").click()
        self.assertEqual(self.state()["zoom"], 2)
        self.assert_shows(self.render(2442, "attack,universe", 1600, names=True))
        names.click()
        self.driver.find_element(By.CSS_SELECTOR, 'input[value="borders"]').click()
        self.assert_shows(self.render(2442, "borders,universe,owned", 1600))

        slider = self.driver.find_element(By.ID, "year")
        slider.send_keys(Keys.ARROW_LEFT)
        self.wait_until("veltroMap.state().year === 2441")
        self.assertEqual(slider.get_attribute("aria-valuetext"), "2441")
        self.assert_shows(self.render(2441, "borders,universe,owned", 1600))
        self.driver.find_element(By.ID, "zoomWhole").click()
        play = self.driver.find_element(By.ID, "play")
        play.click()
        self.assertEqual(play.accessible_name, "Pause")
        self.wait_until("veltroMap.state().year === 2442 && document.getElementById('play').ariaLabel === 'Play'")
        self.assert_shows(self.render(2442, "borders,universe,owned"))

    def test_search_finds_and_marks(self):
        """As you type, whatever the case, a planet starting with the text: its panel shows, the map marks it."""
        self.go_to_year(2442)
        search = self.driver.find_element(By.ID, "search")
        names = [p[2] for p in self.years[2442]["planets"]]
        target = next(n for n in names if len(n) > 4 and sum(m.lower().startswith(n[:3].lower()) for m in names) == 1)
        for text, row in ((target[:3].upper(), names.index(target) + 1), ("</SCRIPT>", names.index(PLANET) + 1)):
            search.clear()
            search.send_keys(text)
            self.wait_until(f"veltroMap.state().marked === {row}")
            self.assertEqual(self.state()["row"], row)
            text = lambda selector: [e.get_attribute("textContent") for e in self.driver.find_elements(By.CSS_SELECTOR, selector)]
            self.assertEqual(text('[data-label="PlanetName"]') + text("#matches button")[:1], [names[row - 1]] * 2)
            marker = self.driver.find_element(By.ID, "marker")
            self.assertTrue(marker.is_displayed())
            centre = (marker.rect["x"] + marker.rect["width"] / 2, marker.rect["y"] + marker.rect["height"] / 2)
            self.assertLessEqual(max(abs(a - b) for a, b in zip(centre, self.client_point(2442, row))), 1)

    def test_controls_are_named(self):
        """The map is named "Map", the readout a live status, and every control has a name."""
        self.driver.find_element(By.ID, "search").clear()
        self.driver.find_element(By.ID, "search").send_keys(PLANET)
        self.assertEqual(self.driver.find_element(By.ID, "map").accessible_name, "Map")
        readout = self.driver.find_element(By.ID, "readout")
        self.assertEqual((readout.aria_role, readout.get_attribute("aria-live")), ("status", "polite"))
        for control in self.driver.find_elements(By.CSS_SELECTOR, "button, input, [role=tab]"):
            self.assertTrue(control.accessible_name.strip(), control.get_attribute("outerHTML"))


# Two halves of about equal time, each with a browser of its own, so that
# CTest runs them side by side: the pointer's cases, and all the others.
POINTER = {"test_readout_follows_the_pointer", "test_pick_rule_at_the_edges", "test_search_finds_and_marks"}

if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--cli", required=True)
    parser.add_argument("--gamegen", required=True)
    parser.add_argument("--maps", required=True)
    parser.add_argument("--half", choices=["pointer", "pictures"])
    args, rest = parser.parse_known_args()
    cases = unittest.defaultTestLoader.getTestCaseNames(WebMapTest)
    chosen = [c for c in cases if not args.half or (c in POINTER) == (args.half == "pointer")]
    unittest.main(argv=[sys.argv[0], *rest, *[f"WebMapTest.{c}" for c in chosen]], verbosity=2)
