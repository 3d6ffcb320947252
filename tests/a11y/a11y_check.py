#!/usr/bin/python3
# What a screen reader user meets in the feature type properties dialog:
# vyr-ftprops opens it on a copy of the example workspace, and this script
# reads the accessible tree over AT-SPI and drives the keyboard with xdotool.
# Every fault is one line, "GAP case | page | role | name | path | what", so
# that a developer can go straight to it; any gap fails the run.
#
#   a11y_check.py VYR_FTPROPS EXAMPLES_DIR WORK_DIR
#
# Run it under an X server and a D-Bus session with the AT-SPI bus (see
# run_a11y.sh). Debian's pyatspi needs the system's python3.
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

import pyatspi
from gi.repository import Atspi

RUN_SECONDS = 60  # a dialog that hangs fails its case within this

# (feature type, language, checks): a reader, a writer with domains, a format
# with list attributes, in both languages.
CASES = [
    ("stations", "en", {"tree"}),
    ("land_use", "en", {"tree"}),
    ("waypoints", "en", {"tree"}),
    ("stations", "de", {"tree"}),
    ("land_use", "de", {"tree"}),
    ("waypoints", "de", {"tree"}),
]

LOCALES = {"en": ("C.UTF-8", ""), "de": ("de_DE.UTF-8", "de")}


def csv_values(text):
    return next(csv.reader([text])) if text else []


class FeatureType:
    """The feature file and capability file of one feature type: what the
    dialog should show, read without the dialog."""

    def __init__(self, workspace_dir, name):
        with open(os.path.join(workspace_dir, "workspace.json")) as file:
            entries = json.load(file)["feature_types"]
        for entry in entries:
            path = os.path.join(workspace_dir, entry["feature"])
            with open(path) as file:
                feature = json.load(file)
            if feature["feature_type"] == name:
                break
        else:
            raise LookupError("the workspace has no feature type " + name)
        self.feature_path = path
        self.feature = feature
        self.caps = {}
        with open(os.path.join(workspace_dir, entry["format"])) as file:
            for row in csv.reader(line for line in file if not line.startswith("#")):
                if len(row) >= 2:
                    self.caps[row[0]] = row[1]

    def cap(self, key):
        return self.caps.get(key, "")

    def page_kinds(self):
        kinds = ["general"]
        if self.cap("HAS_DEFLINE_ATTRS").lower() in ("yes", "true", "1"):
            kinds.append("attributes")
        kinds.append("format")
        if self.cap("DEFLINE_PARMS"):
            kinds.append("parameters")
        return kinds

    def is_reader(self):
        return self.cap("SOURCE").lower() in ("yes", "true", "1")

    def attribute_rows(self):
        """(name, native type) of each user attribute, then the blank row."""
        attributes = self.feature.get("attributes", {})
        rows = [(n, attributes.get("*" + n, "")) for n in self.feature.get("attribute_order", [])]
        return rows + [("", "")]

    def argument_count(self, native_type):
        """How many arguments (width, decimals) the type's template takes."""
        templates = csv_values(self.cap("DATA_TYPE_MAPPINGS"))[0::2]
        name = native_type.split("(")[0]
        for template in templates:
            if template.split("(")[0] == name:
                inside = template.partition("(")[2].rstrip(")")
                return len(inside.split(",")) if inside else 0
        return 0

    def format_attributes(self):
        """(name, exposed) per row: the format's names sorted, checked when the
        feature exposes the name or, for a list, one of its elements."""
        names = sorted(set(csv_values(self.cap("FORMAT_ATTRS"))[0::2]))
        exposed = {re.sub(r"\{[0-9]+\}", "{}", n)
                   for n in self.feature.get("lists", {}).get("*vyr_format_attr_name", [])}
        return [(n, n in exposed) for n in names]


# --- the accessible tree -----------------------------------------------------

R = pyatspi  # roles and states read shorter


def states(obj):
    try:
        return set(obj.getState().getStates())
    except Exception:
        return set()


def children(obj):
    try:
        return [c for c in (obj.getChildAtIndex(i) for i in range(obj.childCount)) if c is not None]
    except Exception:
        return []


def role_name(obj):
    try:
        return obj.getRoleName()
    except Exception:
        return "?"


def label(obj):
    try:
        return (obj.name or "").strip()
    except Exception:
        return ""


def description(obj):
    try:
        return (obj.description or "").strip()
    except Exception:
        return ""


def walk(obj):
    yield obj
    for child in children(obj):
        yield from walk(child)


def path_of(obj, top):
    """Named steps where the tree names them, since Qt reorders a window's
    children as pages are raised."""
    parts = []
    while obj is not None and obj != top:
        name = label(obj)
        parts.append("%s %r" % (role_name(obj), name[:30]) if name else "%s[%d]" % (role_name(obj), obj.getIndexInParent()))
        obj = obj.parent
    return "/".join(reversed(parts))


def wait_for(predicate, seconds, step=0.1):
    end = time.monotonic() + seconds
    while True:
        value = predicate()
        if value or time.monotonic() > end:
            return value
        time.sleep(step)


class Report:
    KINDS = ("objects", "unnamed", "wrong state", "gaps")

    def __init__(self):
        self.gaps = []
        self.tallies = {}  # (case, page) -> count per kind

    def tally(self, case, page, kind, count=1):
        self.tallies.setdefault((case, page), dict.fromkeys(self.KINDS, 0))[kind] += count

    def gap(self, case, page, obj, top, what):
        line = "GAP %s | %s | %s | %r | %s | %s" % (case, page, role_name(obj) if obj else "-",
                                                   label(obj) if obj else "", path_of(obj, top) if obj else "-", what)
        if line not in self.gaps:
            self.gaps.append(line)
            self.tally(case, page, "gaps")
            print(line, flush=True)

    def summary(self):
        for (case, page), counts in self.tallies.items():
            print("%s | %s: %s" % (case, page, ", ".join("%d %s" % (counts[k], k) for k in self.KINDS)))
        print("%d gaps" % len(self.gaps))


class Dialog:
    """One run of vyr-ftprops on one feature type, ended on every way out."""

    def __init__(self, tool, work, feature_type, language):
        self.case = "%s/%s" % (feature_type, language)
        self.folder = os.path.join(work, "%s_%s_%d" % (feature_type, language, int(time.time() * 1000)))
        shutil.copytree(EXAMPLES, self.folder)
        self.data = FeatureType(self.folder, feature_type)
        locale, language_list = LOCALES[language]
        environment = dict(os.environ, LANG=locale, LANGUAGE=language_list, LC_ALL="", LC_MESSAGES="",
                           QT_QPA_PLATFORM="xcb", QT_ACCESSIBILITY="1", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
                           XDG_CONFIG_HOME=os.path.join(self.folder, "config"))
        self.process = subprocess.Popen([tool, os.path.join(self.folder, "workspace.json"), "--edit", feature_type],
                                        env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                        start_new_session=True)
        self.watchdog = threading.Timer(RUN_SECONDS, self.kill)
        self.watchdog.start()
        self.timed_out = False
        self.app = wait_for(self.find_app, 20)
        self.top = wait_for(self.find_dialog, 20) if self.app else None

    def find_app(self):
        for app in children(pyatspi.Registry.getDesktop(0)):
            if label(app) == "vyr-ftprops" and app.get_process_id() == self.process.pid:
                app.set_cache_mask(Atspi.Cache.NONE)
                return app
        return None

    def find_dialog(self):
        for window in children(self.app):
            if R.STATE_SHOWING in states(window) and self.tab_list(window):
                return window
        return None

    def tab_list(self, top=None):
        for obj in walk(top or self.top):
            if obj.getRole() == R.ROLE_PAGE_TAB_LIST:
                return obj
        return None

    def kill(self):
        if self.process.poll() is None:
            self.timed_out = True
            os.killpg(self.process.pid, signal.SIGKILL)

    def close(self):
        self.watchdog.cancel()
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGTERM)
            try:
                self.process.wait(5)
            except subprocess.TimeoutExpired:
                os.killpg(self.process.pid, signal.SIGKILL)
                self.process.wait()
        output = self.process.stdout.read().decode(errors="replace")
        self.process.stdout.close()
        return output


def page_objects(top, tab_list):
    """The pages: the containers beside the tab list's line of ancestors."""
    line = []
    obj = tab_list
    while obj is not None and obj != top:
        line.append(obj)
        obj = obj.parent
    line.append(top)
    pages = []
    for ancestor in line[1:]:
        for child in children(ancestor):
            if child in line or child.getRole() in (R.ROLE_PUSH_BUTTON, R.ROLE_PAGE_TAB_LIST):
                continue
            if child.childCount > 0:
                pages.append(child)
    return pages


def select_tab(tab):
    try:
        action = tab.queryAction()
        action.doAction(0)
    except Exception:
        return False
    return True


def check_tree(dialog, report):
    case, top, data = dialog.case, dialog.top, dialog.data
    tab_list = dialog.tab_list()
    tabs = [t for t in children(tab_list) if t.getRole() == R.ROLE_PAGE_TAB]
    pages = page_objects(top, tab_list)
    kinds = data.page_kinds()
    if len(tabs) != len(kinds):
        report.gap(case, "-", tab_list, top, "%d page tabs, the format calls for %d" % (len(tabs), len(kinds)))
        return
    titles = {}  # page object -> its tab's title
    stray = {}  # object showing on a hidden page -> that page
    for index, (tab, kind) in enumerate(zip(tabs, kinds)):
        title = label(tab)
        if index > 0:
            select_tab(tab)
        showing = lambda: [p for p in pages if R.STATE_SHOWING in states(p)]
        shown = wait_for(lambda: len(showing()) == 1 and showing(), 3) or showing()
        if len(shown) != 1:
            report.gap(case, title, tab, top, "%d pages showing for this tab, not 1" % len(shown))
            continue
        page = titles.setdefault(shown[0], title) and shown[0]
        for other in tabs:
            selected = R.STATE_SELECTED in states(other)
            if selected != (other == tab):
                report.gap(case, title, other, top, "SELECTED %s while %r is the current tab"
                           % ("set" if selected else "missing", title))
        if page.getRole() not in (R.ROLE_PAGE_TAB, R.ROLE_PANEL) or label(page) != title:
            report.gap(case, title, page, top, "page is not a page tab panel named %r" % title)
        for hidden in pages:
            if hidden != page:
                stray.update((o, hidden) for o in walk(hidden) if R.STATE_SHOWING in states(o))
        check_objects(case, title, top, [page, tab_list] + frame_buttons(top, pages), report)
        for table in (o for o in walk(page) if o.getRole() == R.ROLE_TABLE):
            check_table(case, title, top, table, kind, data, report)
    for obj, hidden in stray.items():
        title = titles.get(hidden, "(page without a tab)")
        report.tally(case, title, "wrong state")
        report.gap(case, title, obj, top, "SHOWING while its page is hidden")


def frame_buttons(top, pages):
    inside = set()
    for page in pages:
        inside.update(walk(page))
    return [o for o in walk(top) if o.getRole() == R.ROLE_PUSH_BUTTON and o not in inside]


def check_objects(case, title, top, roots, report):
    for root in roots:
        for obj in walk(root):
            report.tally(case, title, "objects")
            have = states(obj)
            if R.STATE_SHOWING not in have or R.STATE_FOCUSABLE not in have:
                continue
            if obj.getRole() in (R.ROLE_UNKNOWN, R.ROLE_INVALID):
                report.gap(case, title, obj, top, "focusable object without a role")
            if not label(obj):
                report.tally(case, title, "unnamed")
                report.gap(case, title, obj, top, "focusable object without a name")


def heading(table, column):
    try:
        header = table.getColumnHeader(column)
    except Exception:
        header = None
    text = label(header) if header is not None else ""
    if not text:
        try:
            text = (table.getColumnDescription(column) or "").strip()
        except Exception:
            text = ""
    return text


def row_words(table, row):
    words = [str(row + 1)]
    try:
        words.append((table.getRowDescription(row) or "").strip())
        header = table.getRowHeader(row)
        if header is not None:
            words.append(label(header))
    except Exception:
        pass
    return [w for w in words if w]


def says(text, word):
    return re.search(r"(?<![0-9A-Za-z])%s(?![0-9A-Za-z])" % re.escape(word), text, re.IGNORECASE) is not None


def check_table(case, title, top, table_obj, kind, data, report):
    table = table_obj.queryTable()
    rows, columns = table.nRows, table.nColumns
    headings = [heading(table, c) for c in range(columns)]
    for column, text in enumerate(headings):
        if not text:
            report.gap(case, title, table_obj, top, "column %d has no header (getColumnHeader/Description)" % column)
    expected_rows = {"attributes": len(data.attribute_rows()), "format": len(data.format_attributes())}.get(kind)
    if expected_rows is not None and rows != expected_rows:
        report.gap(case, title, table_obj, top, "nRows %d, the feature has %d" % (rows, expected_rows))
    for row in range(rows):
        for column in range(columns):
            cell = table.getAccessibleAt(row, column)
            if cell is None:
                report.gap(case, title, table_obj, top, "no cell at row %d column %d" % (row, column))
                continue
            have = states(cell)
            if R.STATE_SHOWING not in have:
                continue
            where = "row %d column %d: " % (row + 1, column + 1)
            text = label(cell) + " " + description(cell)
            if headings[column] and not says(text, headings[column]):
                report.gap(case, title, cell, top, where + "name/description does not say its column %r"
                           % headings[column])
            if not any(says(text, w) for w in row_words(table, row)):
                report.gap(case, title, cell, top, where + "name/description does not say its row")
            try:
                cell.queryText()
            except NotImplementedError:
                report.gap(case, title, cell, top, where + "no Text interface")
            expected = expected_cell(kind, data, row, column)
            if expected is None:
                continue
            enabled, checked = expected
            if enabled is not None and (R.STATE_ENABLED in have) != enabled:
                report.tally(case, title, "wrong state")
                report.gap(case, title, cell, top, where + ("disabled but ENABLED" if not enabled
                                                            else "enabled but not ENABLED"))
            if checked is not None and (R.STATE_CHECKED in have) != checked:
                report.tally(case, title, "wrong state")
                report.gap(case, title, cell, top, where + ("shown checked but not CHECKED" if checked
                                                            else "shown unchecked but CHECKED"))


def expected_cell(kind, data, row, column):
    """(enabled, checked) as the dialog shows the cell; None where unknown."""
    if kind == "attributes":
        rows = data.attribute_rows()
        if data.is_reader():
            return (False, None)
        if row < len(rows) and column in (2, 3):
            return (data.argument_count(rows[row][1]) >= column - 1, None)
    if kind == "format":
        rows = data.format_attributes()
        if row < len(rows):
            if column == 0:
                return (None, rows[row][1])
            if column == 2:
                return ("{}" in rows[row][0], None)
    return None


def run_case(tool, work, feature_type, language, checks, report):
    dialog = Dialog(tool, work, feature_type, language)
    try:
        if dialog.top is None:
            report.gap(dialog.case, "-", None, None, "the dialog did not show on the accessibility bus")
            return
        if "tree" in checks:
            check_tree(dialog, report)
    finally:
        output = dialog.close()
        if dialog.timed_out:
            report.gap(dialog.case, "-", None, None, "no end within %d s; killed (output: %s)"
                       % (RUN_SECONDS, output.strip()[-200:]))


def main():
    global EXAMPLES
    tool, EXAMPLES, work = sys.argv[1:4]
    os.makedirs(work, exist_ok=True)
    Atspi.set_timeout(5000, 20000)
    report = Report()
    only = os.environ.get("A11Y_CASES")  # e.g. "waypoints/en", to run one case by hand
    for feature_type, language, checks in CASES:
        if only and "%s/%s" % (feature_type, language) not in only.split(","):
            continue
        run_case(tool, work, feature_type, language, checks, report)
    report.summary()
    return 1 if report.gaps else 0


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(2))
    sys.exit(main())
