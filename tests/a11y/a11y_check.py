#!/usr/bin/python3
# What a screen reader user meets in the feature type properties dialog:
# vyr-ftprops opens it on a copy of the example workspace; this script reads
# the accessible tree over AT-SPI and drives the keyboard with xdotool. Each
# fault is one line, "GAP case | page | role | 'name' | path | what", so that
# a developer can go straight to it; any gap fails the run.
#
#   a11y_check.py VYR_FTPROPS EXAMPLES_DIR WORK_DIR
#
# run_a11y.sh gives it the X server, the session bus and the AT-SPI bus.
# Debian's pyatspi works with the system's python3 only. A11Y_CASES=land_use/en
# (comma-separated) runs only those cases.
import csv
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
import traceback

import pyatspi as R
from gi.repository import Atspi, GLib

RUN_SECONDS = 60  # a dialog that hangs fails its case within this

# (feature type, language, checks): a reader, a writer with domains and a
# format with list attributes. "tree" walks every page, "keys" walks each
# page's Tab order and turns the pages with Control+Tab; each "ok_..." is a
# run of its own that ends with Control+Enter (OK_RUNS).
CASES = [
    ("stations", "en", {"keys", "tree"}),
    ("land_use", "en", {"keys", "tree"}),
    ("waypoints", "en", {"keys", "tree"}),
    ("stations", "de", {"tree"}),
    ("land_use", "de", {"keys", "tree"}),
    ("waypoints", "de", {"tree"}),
    ("land_use", "en", {"ok_text"}),
    ("land_use", "en", {"ok_cell"}),
    ("land_use", "de", {"ok_list"}),
]
LOCALES = {"en": ("C.UTF-8", ""), "de": ("de_DE.UTF-8", "de")}
CONTROL_ROLES = (R.ROLE_TABLE, R.ROLE_COMBO_BOX, R.ROLE_PAGE_TAB_LIST)


def csv_values(text):
    return next(csv.reader([text])) if text else []


class FeatureType:
    """What the dialog should show, read from the feature file and the
    capability file without the dialog."""

    def __init__(self, folder, name):
        with open(os.path.join(folder, "workspace.json")) as file:
            for entry in json.load(file)["feature_types"]:
                self.feature_path = os.path.join(folder, entry["feature"])
                self.feature = self.saved()
                if self.feature["feature_type"] == name:
                    break
            else:
                raise LookupError("the workspace has no feature type " + name)
        with open(os.path.join(folder, entry["format"])) as file:
            rows = csv.reader(line for line in file if not line.startswith("#"))
            self.caps = {row[0]: row[1] for row in rows if len(row) > 1}

    def saved(self):
        with open(self.feature_path) as file:
            return json.load(file)

    def flag(self, key):
        return self.caps.get(key, "").lower() in ("yes", "true", "1")

    def page_kinds(self):
        return ["general"] + ["attributes"] * self.flag("HAS_DEFLINE_ATTRS") + ["format"] + \
            ["parameters"] * bool(self.caps.get("DEFLINE_PARMS"))

    def attribute_rows(self):
        """The native type of each user attribute, then the blank row's."""
        attributes = self.feature.get("attributes", {})
        return [attributes.get("*" + n, "") for n in self.feature.get("attribute_order", [])] + [""]

    def argument_count(self, native_type):
        """How many arguments (width, decimals) the type's template takes."""
        for template in csv_values(self.caps.get("DATA_TYPE_MAPPINGS"))[0::2]:
            if template.split("(")[0] == native_type.split("(")[0]:
                inside = template.partition("(")[2].rstrip(")")
                return len(inside.split(",")) if inside else 0
        return 0

    def format_attributes(self):
        """(name, checked) per row: the format's names sorted, checked when the
        feature exposes the name or, for a list, its elements."""
        names = self.feature.get("lists", {}).get("*vyr_format_attr_name", [])
        exposed = {re.sub(r"\{[0-9]+\}", "{}", n) for n in names}
        return [(n, n in exposed) for n in sorted(set(csv_values(self.caps.get("FORMAT_ATTRS"))[0::2]))]

    def checked_options(self):
        """How many of the General page's check boxes the feature turns on."""
        attributes = self.feature.get("attributes", {})
        on = [k for k in ("vyr_merged", "vyr_merge_option", "vyr_fanout", "vyr_dynamic") if attributes.get(k) == "yes"]
        # A dynamic schema shows only with schema sources to take it from.
        return len(on) - ("vyr_dynamic" in on and not self.feature.get("lists", {}).get("vyr_schema_sources"))

    def expected_cell(self, kind, row, column):
        """(enabled, checked) as the dialog shows the cell, None where it says
        nothing: a reader's attributes are read-only; width and decimals take
        their place only when the type has them; a list's element count only
        for a list."""
        if kind == "attributes":
            types = self.attribute_rows()
            if self.flag("SOURCE"):
                return (False, None)
            if row < len(types) and column in (2, 3):
                return (self.argument_count(types[row]) >= column - 1, None)
        if kind == "format" and row < len(self.format_attributes()):
            name, checked = self.format_attributes()[row]
            return {0: (None, checked), 2: ("{}" in name, None)}.get(column)
        return None


def get(obj, attribute, *arguments, default=""):
    """A property or call of a remote object; the default when the object
    went away or lacks it."""
    try:
        value = getattr(obj, attribute)
        value = value(*arguments) if callable(value) else value
        return value.strip() if isinstance(value, str) else value
    except Exception:
        return default


def states(obj):
    state_set = get(obj, "getState", default=None)
    return set(state_set.getStates()) if state_set else set()


def children(obj):
    return [c for c in (obj.getChildAtIndex(i) for i in range(get(obj, "childCount", default=0))) if c is not None]


def walk(obj):
    yield obj
    for child in children(obj):
        yield from walk(child)


def inside(obj, ancestor):
    while obj is not None and obj != ancestor:
        obj = get(obj, "parent", default=None)
    return obj is not None


def describe(obj):
    return "%s %r" % (get(obj, "getRoleName"), get(obj, "name"))


def wait_for(predicate, seconds, step=0.1):
    end = time.monotonic() + seconds
    while not (value := predicate()) and time.monotonic() < end:
        time.sleep(step)
    return value


class Report:
    KINDS = ("objects", "unnamed", "wrong state", "gaps")

    def __init__(self):
        self.gaps, self.tallies = [], {}

    def tally(self, case, page, kind):
        self.tallies.setdefault((case, page), dict.fromkeys(self.KINDS, 0))[kind] += 1

    def gap(self, case, page, obj, top, what):
        line = "GAP %s | %s | %s | %s | %s" % (case, page, describe(obj) if obj else "- ''", path_of(obj, top), what)
        if line not in self.gaps:
            self.gaps.append(line)
            self.tally(case, page, "gaps")
            print(line, flush=True)

    def summary(self):
        for (case, page), counts in self.tallies.items():
            print("%s | %s: %s" % (case, page, ", ".join("%d %s" % (counts[k], k) for k in self.KINDS)))
        print("%d gaps" % len(self.gaps))


def path_of(obj, top):
    """Names where the tree has them, since Qt reorders a window's children as
    pages are raised."""
    parts = []
    while obj is not None and obj != top:
        name = get(obj, "name")
        parts.append("%s %r" % (get(obj, "getRoleName"), name[:30]) if name
                     else "%s[%d]" % (get(obj, "getRoleName"), get(obj, "getIndexInParent", default=-1)))
        obj = get(obj, "parent", default=None)
    return "/".join(reversed(parts)) or "-"


class Run:
    """One run of vyr-ftprops on a fresh copy of the workspace, killed by a
    watchdog when it hangs and ended on every way out."""

    def __init__(self, tool, work, report, feature_type, language):
        self.case, self.report, self.top = "%s/%s" % (feature_type, language), report, None
        self.folder = os.path.join(work, "%s_%s_%d" % (feature_type, language, time.monotonic_ns()))
        shutil.copytree(EXAMPLES, self.folder)
        self.data = FeatureType(self.folder, feature_type)
        locale, languages = LOCALES[language]
        environment = dict(os.environ, LANG=locale, LANGUAGE=languages, LC_ALL="", LC_MESSAGES="",
                           QT_QPA_PLATFORM="xcb", QT_ACCESSIBILITY="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                           XDG_CONFIG_HOME=os.path.join(self.folder, "config"))
        self.output = os.path.join(self.folder, "output.txt")
        with open(self.output, "w") as output:
            self.process = subprocess.Popen([tool, os.path.join(self.folder, "workspace.json"), "--edit", feature_type],
                                            env=environment, stdout=output, stderr=subprocess.STDOUT,
                                            start_new_session=True)
        self.timed_out = False
        self.watchdog = threading.Timer(RUN_SECONDS, self.kill)
        self.watchdog.start()
        app = wait_for(self.find_app, 20)
        self.top = app and wait_for(lambda: next((w for w in children(app) if R.STATE_SHOWING in states(w)
                                                  and self.find_tab_list(w)), None), 20)
        if self.top:
            self.tab_list = self.find_tab_list(self.top)
            self.tabs = [t for t in children(self.tab_list) if get(t, "getRole") == R.ROLE_PAGE_TAB]
            self.pages = self.find_pages()
            for tab in self.tabs:  # the summary in the tabs' order
                report.tallies.setdefault((self.case, get(tab, "name")), dict.fromkeys(report.KINDS, 0))
            self.buttons = [o for o in walk(self.top) if get(o, "getRole") == R.ROLE_PUSH_BUTTON
                            and not any(inside(o, p) for p in self.pages + [self.tab_list])]

    def find_app(self):
        for app in children(R.Registry.getDesktop(0)):
            if get(app, "name") == "vyr-ftprops" and get(app, "get_process_id") == self.process.pid:
                app.set_cache_mask(Atspi.Cache.NONE)  # states change under the keys
                return app
        return None

    @staticmethod
    def find_tab_list(top):
        return next((o for o in walk(top) if get(o, "getRole") == R.ROLE_PAGE_TAB_LIST), None)

    def find_pages(self):
        """The containers beside the line from the window down to the tabs."""
        line, obj = [], self.tab_list
        while obj is not None and obj != self.top:
            line.append(obj)
            obj = obj.parent
        line.append(self.top)
        return [c for a in line[1:] for c in children(a) if c not in line and get(c, "childCount", default=0)
                and get(c, "getRole") not in (R.ROLE_PUSH_BUTTON, R.ROLE_PAGE_TAB_LIST)]

    def shown_page(self):
        shown = [p for p in self.pages if R.STATE_SHOWING in states(p)]
        return shown[0] if len(shown) == 1 else None

    def show(self, kind):
        """Turns to a page through its tab's action, not the keyboard."""
        tab = self.tabs[self.data.page_kinds().index(kind)]
        tab.queryAction().doAction(0)
        return wait_for(self.shown_page, 3)

    def gap(self, page, obj, what):
        self.report.gap(self.case, page, obj, self.top, what)

    def wrong(self, page, obj, what):
        self.report.tally(self.case, page, "wrong state")
        self.gap(page, obj, what)

    def kill(self):
        if self.process.poll() is None:
            self.timed_out = True
            os.killpg(self.process.pid, signal.SIGKILL)

    def close(self, ended_by_ok):
        self.watchdog.cancel()
        with open(self.output, errors="replace") as output:
            said = output.read()[-200:]
        # Checks on a program that went away would read nothing and pass.
        if self.process.poll() is not None and not ended_by_ok and not self.timed_out:
            self.gap("-", None, "the program ended during the check, exit %d (said: %s)"
                     % (self.process.returncode, said))
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGTERM)
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                os.killpg(self.process.pid, signal.SIGKILL)
                self.process.wait()
        if self.timed_out:
            self.gap("-", None, "no end within %d s; killed (said: %s)" % (RUN_SECONDS, said))


# --- the accessible tree -------------------------------------------------------


def check_tree(run):
    kinds = run.data.page_kinds()
    if len(run.tabs) != len(kinds):
        return run.gap("-", run.tab_list, "%d page tabs, the format calls for %d" % (len(run.tabs), len(kinds)))
    titles, stray = {}, {}  # page -> its tab's title; object showing on a hidden page -> that page
    for tab, kind in zip(run.tabs, kinds):
        title = get(tab, "name")
        page = run.show(kind)
        if not page:
            run.gap(title, tab, "not exactly one page SHOWING for this tab")
            continue
        titles[page] = title
        for other in run.tabs:
            if (R.STATE_SELECTED in states(other)) != (other == tab):
                run.gap(title, other, "SELECTED %s while %r is the current tab"
                        % ("set" if other != tab else "missing", title))
        if get(page, "getRole") not in (R.ROLE_PAGE_TAB, R.ROLE_PANEL) or get(page, "name") != title:
            run.gap(title, page, "the page is no page tab panel named %r" % title)
        for hidden in run.pages:
            if hidden != page:
                stray.update((o, hidden) for o in walk(hidden) if R.STATE_SHOWING in states(o))
        for obj in (o for root in [page, run.tab_list] + run.buttons for o in walk(root)):
            run.report.tally(run.case, title, "objects")
            if {R.STATE_SHOWING, R.STATE_FOCUSABLE} <= states(obj):
                if get(obj, "getRole") in (R.ROLE_UNKNOWN, R.ROLE_INVALID):
                    run.gap(title, obj, "focusable object without a role")
                if not get(obj, "name"):
                    run.report.tally(run.case, title, "unnamed")
                    run.gap(title, obj, "focusable object without a name")
                # A greyed field's key reaches nothing, so it need not be told.
                if (get(obj, "getRole") == R.ROLE_COMBO_BOX and R.STATE_ENABLED in states(obj)
                        and get(obj.parent, "getRole") != R.ROLE_TABLE):
                    action = get(obj, "queryAction", default=None)
                    keys = [get(action, "getKeyBinding", i) for i in range(action.nActions)] if action else []
                    if not any(k for k in keys):
                        run.gap(title, obj, "a combo box that tells no key to reach it")
        for table in (o for o in walk(page) if get(o, "getRole") == R.ROLE_TABLE):
            check_table(run, title, kind, table)
        if kind == "general":
            boxes = [o for o in walk(page) if get(o, "getRole") == R.ROLE_CHECK_BOX]
            if sum(R.STATE_CHECKED in states(o) for o in boxes) != run.data.checked_options():
                run.wrong(title, page, "CHECKED on %s; the feature turns on %d of these options"
                        % ([get(o, "name") for o in boxes if R.STATE_CHECKED in states(o)], run.data.checked_options()))
    for obj, hidden in stray.items():
        run.wrong(titles.get(hidden, "(page without a tab)"), obj, "SHOWING while its page is hidden")


# What a bare button cell is labelled with, in the languages the check runs in.
BUTTON_LABELS = {"Edit", "View", "Bearbeiten", "Anzeigen", ""}


def says(text, word):
    return re.search(r"(?<!\w)%s(?!\w)" % re.escape(word), text, re.IGNORECASE) is not None


def check_table(run, title, kind, table_obj):
    table = table_obj.queryTable()
    headings = []
    for column in range(table.nColumns):
        header = get(table, "getColumnHeader", column, default=None)
        headings.append(get(header, "name"))
        if table.nRows and not headings[-1]:
            run.gap(title, table_obj, "column %d has no header (getColumnHeader)" % (column + 1))
    if not get(table_obj, "description"):
        run.gap(title, table_obj, "the table has no description (how to use it)")
    rows = {"attributes": len(run.data.attribute_rows()), "format": len(run.data.format_attributes())}.get(kind)
    if rows is not None and table.nRows != rows:
        run.gap(title, table_obj, "nRows is %d, the feature has %d rows" % (table.nRows, rows))
    for row in range(table.nRows):
        row_words = [str(row + 1), get(table, "getRowDescription", row),
                     get(get(table, "getRowHeader", row, default=None), "name")]
        for column in range(table.nColumns):
            cell = table.getAccessibleAt(row, column)
            have = states(cell)
            if R.STATE_SHOWING not in have:
                continue  # scrolled away or a hidden column
            where = "row %d column %d: " % (row + 1, column + 1)
            text = get(cell, "name") + " " + get(cell, "description")
            if headings[column] and not says(text, headings[column]):
                run.gap(title, cell, where + "name/description does not say its column %r" % headings[column])
            if not any(says(text, w) for w in row_words if w):
                run.gap(title, cell, where + "name/description does not say its row")
            if not get(cell, "queryText", default=None):
                run.gap(title, cell, where + "no Text interface")
            if get(cell, "getRole") == R.ROLE_PUSH_BUTTON and get(cell, "name").rstrip(".\u2026") in BUTTON_LABELS:
                run.gap(title, cell, where + "a button named by its label alone, not by what it works on")
            enabled, checked = run.data.expected_cell(kind, row, column) or (None, None)
            for state, shown, words in ((R.STATE_ENABLED, enabled, ("disabled", "enabled")),
                                        (R.STATE_CHECKED, checked, ("unchecked", "checked"))):
                if shown is not None and (state in have) != shown:
                    run.wrong(title, cell, where + "shown %s but %s%s"
                              % (words[shown], "not " * shown, words[1].upper()))


# --- the keyboard --------------------------------------------------------------


class FocusLog:
    """The objects that took the focus, in order, from AT-SPI's events."""

    EVENT = "object:state-changed:focused"

    def __init__(self):
        self.events = []
        R.Registry.registerEventListener(self.record, self.EVENT)

    def record(self, event):
        if event.detail1:
            self.events.append(event.source)

    def take(self, quiet=0.15, limit=1.5):
        """The focus events until none came for a while."""
        context, start = GLib.MainContext.default(), time.monotonic()
        last, count = start, 0
        while time.monotonic() - start < limit and not (count and time.monotonic() - last > quiet):
            while context.pending():
                context.iteration(False)
            if len(self.events) != count:
                count, last = len(self.events), time.monotonic()
            time.sleep(0.02)
        events, self.events = self.events, []
        return events

    def close(self):
        R.Registry.deregisterEventListener(self.record, self.EVENT)


def press(*keys):
    subprocess.run(["xdotool", "key", "--clearmodifiers"] + list(keys), timeout=10, check=False)


def focus_window(run):
    # No window manager hands out the focus here.
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(run.process.pid)],
                           capture_output=True, text=True, timeout=10).stdout.split()
    if found:
        subprocess.run(["xdotool", "windowfocus", "--sync", found[-1]], timeout=5, check=False)


def control_of(obj, top):
    """What Tab stops on: a grid for its cells, a drop list for its parts, the
    tab row for its tabs."""
    control, node = obj, obj
    while node is not None and node != top:
        if get(node, "getRole") in CONTROL_ROLES:
            control = node
        node = get(node, "parent", default=None)
    return control


def landings(events, top):
    """The controls the focus went to; a grid's moves between cells count once."""
    controls = []
    for control in (control_of(e, top) for e in events):
        if not controls or controls[-1] != control:
            controls.append(control)
    return controls


def check_keys(run):
    log = FocusLog()
    try:
        focus_window(run)
        log.take(limit=0.5)
        focused = [o for o in walk(run.top) if R.STATE_FOCUSED in states(o)]
        start = control_of(focused[-1], run.top) if focused else None
        for index, tab in enumerate(run.tabs):
            title = get(tab, "name")
            if index:
                press("ctrl+Tab")
                landed = landings(log.take(), run.top)
                page = wait_for(run.shown_page, 2)
                if len(landed) != 1 or not page or not inside(landed[0], page):
                    run.gap(title, landed[-1] if landed else None, "Control+Tab: the focus went to %s, not once to "
                            "the new page's first control" % (", ".join(map(describe, landed)) or "nothing"))
                start = landed[-1] if landed else start
            page = run.shown_page()
            if start is None or page is None:
                run.gap(title, None, "no focused control and page to start the Tab cycle from")
                continue
            visits = tab_cycle(run, title, page, start, log)
            # The page's first control is where Tab goes from the tabs.
            if index and visits and run.tab_list in visits[:-1]:
                run.gap(title, start, "Control+Tab put the focus here, not on %s, where Tab goes from the tabs"
                        % describe(visits[visits.index(run.tab_list) + 1]))
    finally:
        log.close()


def tab_cycle(run, title, page, start, log):
    """Tabs until the focus is back where it started: every showing, enabled
    control of the page and of the frame once. The controls in Tab order,
    None when the focus did not come back."""
    expected = [o for root in [page, run.tab_list] + run.buttons for o in walk(root)
                if {R.STATE_SHOWING, R.STATE_FOCUSABLE, R.STATE_ENABLED} <= states(o) and control_of(o, run.top) == o]
    visits, silent, closed = [start], 0, False
    while not closed and silent < 3 and len(visits) < 80:
        press("Tab")
        landed = landings(log.take(), run.top)
        silent = 0 if landed else silent + 1
        visits += [c for c in landed if c != visits[-1]]
        if start in visits[1:]:
            visits, closed = visits[:visits.index(start, 1)], True
    print("ORDER %s | %s | %s" % (run.case, title, " > ".join(map(describe, visits))), flush=True)
    if not closed:
        run.gap(title, visits[-1], "Tab does not move the focus on from here" if silent == 3
                else "Tab does not come back to %s within 80 controls" % describe(start))
    for control in expected:
        if control not in visits:
            run.gap(title, control, "Tab never reaches this control")
    for control in visits:
        if visits.count(control) > 1:
            run.gap(title, control, "Tab reaches this control %d times in one cycle" % visits.count(control))
        if control not in expected:
            run.gap(title, control, "Tab reaches this, which is no showing, enabled control of the page")
    return visits if closed else None


def put_focus(run, kind, role):
    """Puts the keyboard on a page's first control of a role, by AT-SPI: how
    it gets there is not what these runs test."""
    page = run.show(kind)
    next(o for o in walk(page) if get(o, "getRole") == role).queryComponent().grabFocus()
    time.sleep(0.3)


def parameter(feature, name):
    lists = feature.get("lists", {})
    return dict(zip(lists.get("*vyr_parameter_name", []), lists.get("*vyr_parameter_value", []))).get(name)


# check -> (where the keyboard is, the keys that get it there and edit, what
# the saved feature holds): Control+Enter must press OK from there.
OK_RUNS = {
    "ok_text": ("the name field", lambda run: (put_focus(run, "general", R.ROLE_TEXT),
                                               press("ctrl+a", "p", "a", "r", "c", "e", "l", "s")),
                lambda feature: feature["feature_type"] == "parcels"),
    "ok_cell": ("an open cell edit", lambda run: (put_focus(run, "attributes", R.ROLE_TABLE),
                                                  press("ctrl+Home", "Home", "k", "i", "n", "d")),
                lambda feature: feature.get("attribute_order", [""])[0] == "kind"),
    # The open list has no current entry: a letter picks one, an arrow only
    # marks the first.
    "ok_list": ("a drop-list cell", lambda run: (put_focus(run, "parameters", R.ROLE_TABLE),
                                                 press("ctrl+Home", "Home", "Right"),
                                                 press("alt+Down"), time.sleep(0.3), press("n", "Return")),
                lambda feature: parameter(feature, "SPATIAL_INDEX") == "No"),
}


def check_ok(run, check):
    where, keys, saved = OK_RUNS[check]
    focus_window(run)
    keys(run)
    time.sleep(0.3)
    press("ctrl+Return")
    try:
        status = run.process.wait(5)
    except subprocess.TimeoutExpired:
        return run.gap("-", None, "Control+Enter from %s: the dialog stays open" % where)
    if status != 0 or not saved(run.data.saved()):
        run.gap("-", None, "Control+Enter from %s: exit %d, the feature file lacks the edit: %s"
                % (where, status, json.dumps(run.data.saved(), separators=(",", ":"))[:300]))


def main():
    global EXAMPLES
    tool, EXAMPLES, work = sys.argv[1:4]
    Atspi.set_timeout(5000, 20000)
    # The registry starts on first use; a program that came first would not
    # be on the desktop.
    if not wait_for(lambda: R.Registry.getDesktop(0) is not None, 10):
        print("the AT-SPI registry does not answer")
        return 1
    report, only = Report(), os.environ.get("A11Y_CASES")
    for feature_type, language, checks in CASES:
        if only and "%s/%s" % (feature_type, language) not in only.split(","):
            continue
        run = Run(tool, work, report, feature_type, language)
        try:
            if not run.top:
                run.gap("-", None, "the dialog did not show on the AT-SPI desktop")
                continue
            for check in sorted(checks, key=["keys", "tree", "ok_text", "ok_cell", "ok_list"].index):
                {"keys": check_keys, "tree": check_tree}.get(check, lambda r: check_ok(r, check))(run)
        except Exception:
            traceback.print_exc()
            run.gap("-", None, "the check itself broke (traceback above)")
        finally:
            run.close(ended_by_ok=bool(checks & OK_RUNS.keys()))
    report.summary()
    return 1 if report.gaps else 0


if __name__ == "__main__":
    # The time limit ends the check at once: an exception here would be
    # caught by a case's handler and the next case would start. The dialog
    # left behind dies with its X server.
    signal.signal(signal.SIGTERM, lambda *_: os._exit(2))
    sys.exit(main())
