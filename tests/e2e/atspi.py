# Reads the running game the way a screen reader does, through the desktop's
# accessibility bus (AT-SPI) alone: the status line, the question, the turn;
# then presses Next and reads them again, and checks it was told of each
# change. Exits 0 when everything is heard, 1 with the reason otherwise.
import sys
import time

import pyatspi
from gi.repository import GLib


def fail(why):
    print("FAIL: " + why)
    sys.exit(1)


def find_app():
    for _ in range(150):
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == "Tandrel":
                return app
        time.sleep(0.1)
    fail("the game never appeared on the accessibility bus")


def shown(node):
    return node.getState().contains(pyatspi.STATE_SHOWING)


def everything(node):
    yield node
    for child in node:
        if child is not None:
            yield from everything(child)


def one(app, test, what):
    found = [n for n in everything(app) if test(n) and shown(n)]
    if len(found) != 1:
        fail("%d controls found for %s" % (len(found), what))
    return found[0]


def heard(app):
    status = one(app, lambda n: n.description == "Match status", "the match status")
    halves = [one(app, lambda n, d=d: n.description == d, d) for d in ("Match line left", "Match line right")]
    turn = one(app, lambda n: n.name.endswith(", their turn"), "the turn")
    return status.name, tuple(h.name.strip() for h in halves), turn.name


app = find_app()
for _ in range(50):  # the title card comes first
    if any(n.description == "Match status" and shown(n) for n in everything(app)):
        break
    time.sleep(0.2)
status, question, turn = heard(app)
if not (status.startswith("Viewing Match 1 of ") and status.endswith(" Matches...")):
    fail("status reads %r" % status)
if "_____" not in "".join(question):
    fail("the question reads %r, without its blank" % question)
if turn != "Player 1 name, their turn":
    fail("the turn reads %r" % turn)

told = set()
pyatspi.Registry.registerEventListener(lambda e: told.add(e.source.description or e.source.name),
                                       "object:property-change:accessible-name")
nexts = [n for n in everything(app) if n.getRoleName() == "push button" and n.name == "Next" and shown(n)]
if len(nexts) != 1:
    fail("%d Next buttons on screen" % len(nexts))


def press():
    nexts[0].queryAction().doAction(0)
    return False


GLib.timeout_add(200, press)
GLib.timeout_add(2500, lambda: pyatspi.Registry.stop())
pyatspi.Registry.start()

status2, question2, turn2 = heard(app)
if not status2.startswith("Viewing Match 2 of "):
    fail("after Next the status reads %r" % status2)
if question2 == question or "_____" not in "".join(question2):
    fail("after Next the question reads %r" % question2)
if turn2 != "Player 2 name, their turn":
    fail("after Next the turn reads %r" % turn2)
changed = {"Match status", "Player 2 name, their turn"}
changed |= {half for half, before, after in zip(("Match line left", "Match line right"), question, question2) if before != after}
missing = changed - told
if missing:
    fail("not told of changes to %s (told: %s)" % (sorted(missing), sorted(told)))
print("heard: %r, %r, %r; after Next: %r, %r, %r" % (status, question, turn, status2, question2, turn2))
