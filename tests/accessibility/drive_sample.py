#!/usr/bin/python3
"""Drives the desktop program through the accessibility interface (AT-SPI),
as a screen reader or a GUI test tool does: loads the sample game from the
file selection window, presses overlay buttons by their toggle action, clicks
a planet and reads the detail panel, opens Empire Statistics and reads its
figures by their captions, finds a planet by its name and finds the turn's
tools by theirs. Exits 0 when all of it worked."""

import json
import subprocess
import sys
import time

import pyatspi

VELTRO, CLI, SAMPLE = sys.argv[1], sys.argv[2], sys.argv[3]


def walk(node):
    yield node
    for i in range(node.childCount):
        child = node.getChildAtIndex(i)
        if child is not None:
            yield from walk(child)


# Waits are for a state, and long: a slow machine must not decide the verdict.
# CTest's own time limit ends a run that never gets there.
def find(root, predicate, timeout=60.0):
    end = time.time() + timeout
    while time.time() < end:
        for node in walk(root):
            try:
                if predicate(node):
                    return node
            except Exception:
                pass
        time.sleep(0.2)
    raise SystemExit("not found: " + predicate.__doc__ if predicate.__doc__ else "a control was not found")


def application():
    end = time.time() + 60
    while time.time() < end:
        desktop = pyatspi.Registry.getDesktop(0)
        for i in range(desktop.childCount):
            app = desktop.getChildAtIndex(i)
            if app is not None and app.name == "Veltro Marches":
                return app
        time.sleep(0.2)
    raise SystemExit("the program did not appear on the accessibility bus")


def press(node, action):
    act = node.queryAction()
    names = [act.getName(i) for i in range(act.nActions)]
    act.doAction(names.index(action))


def click(node):
    """Clicks the middle of a node on screen, as the user's pointer would."""
    box = node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    x, y = box.x + box.width // 2, box.y + box.height // 2
    pyatspi.Registry.generateMouseEvent(x, y, pyatspi.MOUSE_ABS)
    pyatspi.Registry.generateMouseEvent(x, y, "b1c")


def labelled(root, caption):
    """The node that the label `caption` labels."""
    label = find(root, lambda n: n.getRoleName() == "label" and n.name == caption)
    for relation in label.getRelationSet():
        if relation.getRelationType() == pyatspi.RELATION_LABEL_FOR:
            return relation.getTarget(0)
    raise SystemExit("%r labels nothing" % caption)


def read_statistics(app, game):
    """Opens Empire Statistics from the menu by pointer (a modal window would
    hold an action's reply until it closes) and reads the own race's figures."""
    click(find(app, lambda n: n.getRoleName() in ("menu", "menu item") and n.name == "Data"))
    click(find(app, lambda n: n.getRoleName() == "menu item" and n.name == "Empire Statistics"
               and n.getState().contains(pyatspi.STATE_SHOWING)))
    stats = find(app, lambda n: n.getRoleName() == "dialog" and n.name == "Empire Statistics")
    race = next(p for p in game["Players"] if p["RaceName"] == game["OwnRaceName"])
    for caption, field in (("Total Planets:", "TotalPlanets"), ("Population:", "TotalPopulation"),
                           ("Territory:", "Territory")):
        value = labelled(stats, caption)
        print("statistics:", caption, value.name)
        if value.name != str(race[field]):
            raise SystemExit("%s reads %r, the game has %r" % (caption, value.name, race[field]))
    average = "Average Population: %d" % (race["TotalPopulation"] // race["TotalPlanets"])
    find(stats, lambda n: n.getRoleName() == "label" and n.name == average)
    press(find(stats, lambda n: n.getRoleName() == "push button" and n.name == "Close"), "Press")


def showing(node):
    return node.getState().contains(pyatspi.STATE_SHOWING)


def key(keysym):
    pyatspi.Registry.generateKeyboardEvent(keysym, None, pyatspi.KEY_SYM)


def open_menu(app, title, entry):
    """Clicks the menu `title` until its `entry` shows: a click while a
    window that has just closed still holds the pointer opens nothing."""
    end = time.time() + 60
    while time.time() < end:
        click(find(app, lambda n: n.getRoleName() in ("menu", "menu item") and n.name == title))
        try:
            return find(app, lambda n: n.getRoleName() in ("menu", "menu item") and n.name == entry and showing(n),
                        timeout=3)
        except SystemExit:
            key(0xff1b)  # Escape, in case the menu opened late
    raise SystemExit("the menu %s never showed %s" % (title, entry))


def find_planet(app):
    """Finds the new turn's entries in the File menu and the Measure tool by
    their names, then a planet from Edit > Find Planet..., its name typed in
    part and in another case, and reads the panel."""
    find(app, lambda n: n.getRoleName() == "radio button" and n.name == "Measure")
    open_menu(app, "File", "Reload")
    find(app, lambda n: n.getRoleName() in ("menu", "menu item") and n.name == "Recent Games" and showing(n))
    key(0xff1b)  # Escape closes the menu
    click(open_menu(app, "Edit", "Find Planet\u2026"))
    field = find(app, lambda n: n.getRoleName() == "text" and n.name == "Find Planet" and showing(n))
    field.queryEditableText().setTextContents("zarq")
    key(0xff0d)  # Return
    find(app, lambda n: n.getRoleName() == "label" and n.description == "PlanetName" and n.name == "Zarquon")
    print("found: Zarquon")


def main():
    program = subprocess.Popen([VELTRO, SAMPLE])
    try:
        app = application()
        year = find(app, lambda n: n.getRoleName() == "text" and n.name == "Current Game Year:")
        year.queryEditableText().setTextContents("2431")
        press(find(app, lambda n: n.getRoleName() == "push button" and n.name == "Load & Generate Data"), "Press")
        for name in ("Show Universe", "Show Borders", "Show Planets Owned"):
            button = find(app, lambda n, name=name: n.name == name and n.getState().contains(pyatspi.STATE_ENABLED))
            press(button, "Toggle")
            find(app, lambda n, name=name: n.name == name and n.getState().contains(pyatspi.STATE_CHECKED))

        # Click the planet "All Work" of the sample: its place on the map from
        # the map's extents on screen and the game's view scale.
        game = json.loads(subprocess.run([CLI, "export", SAMPLE, "--year", "2431"], check=True,
                                         capture_output=True).stdout)
        planet = next(p for p in game["Planets"] if p["Name"] == "All Work")
        box = find(app, lambda n: n.name == "Map").queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        per_unit = box.width / 10020.0
        x = box.x + int(planet["X"] * game["Scale"] * per_unit) + 1
        y = box.y + int(planet["Y"] * game["Scale"] * per_unit) + 1
        pyatspi.Registry.generateMouseEvent(x, y, pyatspi.MOUSE_ABS)
        pyatspi.Registry.generateMouseEvent(x, y, "b1c")

        name = find(app, lambda n: n.getRoleName() == "label" and n.description == "PlanetName" and n.name)
        owner = find(app, lambda n: n.getRoleName() == "label" and n.description == "Owner" and n.name)
        print("panel:", name.name, "/", owner.name)
        if name.name != "All Work" or owner.name != planet["Owner"]:
            raise SystemExit("the panel shows %r of %r" % (name.name, owner.name))
        read_statistics(app, game)
        find_planet(app)
    finally:
        program.terminate()
        program.wait(10)


main()
