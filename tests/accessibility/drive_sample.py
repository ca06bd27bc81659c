#!/usr/bin/python3
"""Drives the desktop program over AT-SPI as a screen reader would: loads the
sample, presses overlays, reads a clicked planet and Empire Statistics against the
CLI's export. Exits 0 when all of it worked."""

import json
import subprocess
import sys
import time

import pyatspi

VELTRO, CLI, SAMPLE = sys.argv[1:4]
ESCAPE = 0xff1b


def walk(node):
    yield node
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is not None:
            yield from walk(child)


# Waits are for a state, and long: a slow machine must not decide the verdict.
# CTest's own time limit ends a run that never gets there.
def find(root, match, what, timeout=60.0):
    end = time.time() + timeout
    while time.time() < end:
        try:
            found = next((n for n in walk(root) if match(n)), None)
            if found is not None:
                return found
        except Exception:  # a node went away while it was read
            pass
        time.sleep(0.2)
    raise SystemExit("not found: " + what)


def control(root, roles, name, timeout=60.0, only_showing=False):
    return find(root, lambda n: n.getRoleName() in roles.split("|") and n.name == name
                and (not only_showing or n.getState().contains(pyatspi.STATE_SHOWING)), "%s %r" % (roles, name), timeout)


def press(node, action):
    act = node.queryAction()
    act.doAction([act.getName(i) for i in range(act.nActions)].index(action))


def click_at(x, y):
    pyatspi.Registry.generateMouseEvent(x, y, pyatspi.MOUSE_ABS)
    pyatspi.Registry.generateMouseEvent(x, y, "b1c")


def click(node):
    box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    click_at(box.x + box.width // 2, box.y + box.height // 2)


def key(keysym):
    pyatspi.Registry.generateKeyboardEvent(keysym, None, pyatspi.KEY_SYM)


def open_menu(app, title, entry):
    # Clicked until the entry shows: a window that has just closed may still hold the pointer.
    for _ in range(20):
        click(control(app, "menu|menu item", title))
        try:
            return control(app, "menu|menu item", entry, timeout=3, only_showing=True)
        except SystemExit:
            key(ESCAPE)  # in case the menu opened late
    raise SystemExit("the menu %s never showed %s" % (title, entry))


def panel(app, field, name=None):  # the detail panel's field, once it shows `name`
    return find(app, lambda n: n.getRoleName() == "label" and n.description == field and n.name
                and name in (None, n.name), "%s %s" % (field, name))


def read_statistics(app, game):
    # Opened by pointer: a modal window would hold an action's reply until it closes.
    click(open_menu(app, "Data", "Empire Statistics"))
    stats = control(app, "dialog", "Empire Statistics")
    race = next(p for p in game["Players"] if p["RaceName"] == game["OwnRaceName"])
    for caption, field in (("Total Planets:", "TotalPlanets"), ("Population:", "TotalPopulation"),
                           ("Territory:", "Territory")):
        value = next((r.getTarget(0) for r in control(stats, "label", caption).getRelationSet()
                      if r.getRelationType() == pyatspi.RELATION_LABEL_FOR), None)
        if value is None or value.name != str(race[field]):
            raise SystemExit("%s reads %r, the game has %r" % (caption, value and value.name, race[field]))
    control(stats, "label", "Average Population: %d" % (race["TotalPopulation"] // race["TotalPlanets"]))
    press(control(stats, "push button", "Close"), "Press")


def start():
    # A busy display may refuse the program's first connection: it is started again, at most twice.
    for _ in range(3):
        program = subprocess.Popen([VELTRO, SAMPLE])
        app = find(pyatspi.Registry.getDesktop(0), lambda n: program.poll() is not None or (
            n.getRoleName() == "application" and n.name == "Veltro Marches"), "application 'Veltro Marches'")
        if program.poll() is None:
            return program, app
    raise SystemExit("the program did not start")


def main():
    program, app = start()
    try:
        control(app, "text", "Current Game Year:").queryEditableText().setTextContents("2431")
        press(control(app, "push button", "Load & Generate Data"), "Press")
        for name in ("Show Universe", "Show Borders", "Show Planets Owned"):
            press(find(app, lambda n: n.name == name and n.getState().contains(pyatspi.STATE_ENABLED), name), "Toggle")
            find(app, lambda n: n.name == name and n.getState().contains(pyatspi.STATE_CHECKED), name + " pressed")

        # The planet "All Work" clicked where the game's view scale puts it on the map.
        game = json.loads(subprocess.run([CLI, "export", SAMPLE, "--year", "2431"], check=True,
                                         capture_output=True).stdout)
        planet = next(p for p in game["Planets"] if p["Name"] == "All Work")
        box = find(app, lambda n: n.name == "Map", "Map").queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        per_unit = box.width / 10020.0
        click_at(box.x + int(planet["X"] * game["Scale"] * per_unit) + 1,
                 box.y + int(planet["Y"] * game["Scale"] * per_unit) + 1)
        name, owner = panel(app, "PlanetName").name, panel(app, "Owner").name
        if name != "All Work" or owner != planet["Owner"]:
            raise SystemExit("the panel shows %r of %r" % (name, owner))
        read_statistics(app, game)
    finally:
        program.terminate()
        program.wait(10)


main()
