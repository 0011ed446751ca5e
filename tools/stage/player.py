"""The real program, driven as a user drives it: by the keys and the mouse, at the places where its controls are."""

import os

from processes import Impatient, wait_until

TOOL_BAR = "Toolbar"


class Player:
    def __init__(self, stage, program):
        self._stage = stage
        self._program = program
        self._accessibility = None
        self._gone = ()  # what is raised for a control that is no more
        self._found = {}  # controls by name and role, where they were seen last: each question to them is a message
        self.process = None

    # Its windows

    def start(self):
        """Starts the program, answers what it has to say at a first start, and returns when its window is there."""
        self.process = self._stage.processes.start("larkspin", [self._program], self._stage.environment)
        self._found = {}

        def window_without_boxes():
            self.check_alive()
            if self.box_says(""):
                self.answer_box("")
                return False
            return self.windows("^Larkspin$") and self.shows("Playlist", "list")  # the splash has the same title

        wait_until(window_without_boxes, "the main window")
        self.activate()

    def check_alive(self):
        if self.process.poll() is not None:
            raise RuntimeError(f"the program has ended with {self.process.returncode}: see {self._stage.logs}/larkspin.log")

    def is_running(self):
        return self.process is not None and self.process.poll() is None

    def window(self):
        return wait_until(lambda: self.windows("^Larkspin$"), "the main window")[0]

    def activate(self):
        self._xdotool("windowactivate", "--sync", self.window())

    def close(self):
        """Closes the window as its frame's button does, and returns the exit code of the process."""
        self.activate()
        self.press("alt+F4")
        wait_until(lambda: not self.is_running(), "the program to end", 10)
        return self.process.returncode

    def end(self):
        """Ends the process whatever it does, if it is still there."""
        if self.process is not None:
            self._stage.processes.end(self.process)

    def windows(self, title):
        return self._stage.run("xdotool", "search", "--onlyvisible", "--name", title, check=False).split()

    # Keys and mouse

    def _xdotool(self, *arguments):
        self._stage.run("xdotool", *map(str, arguments), check=False)

    def press(self, *keys):
        self._xdotool("key", *keys)

    def type(self, text):
        self._xdotool("type", "--delay", "15", text)

    def click_at(self, x, y, button=1, times=1):
        # The display takes one after the other. To wait for the move takes long where the pointer is there already.
        self._xdotool("mousemove", int(x), int(y), "click", "--repeat", times, "--delay", "60", button)

    def click(self, name, role=None, **options):
        x, y, width, height = self.place(name, role)
        self.click_at(x + width / 2, y + height / 2, **options)

    def click_in_tool_bar(self, name):
        def button():
            return next((item for item, found in self._walk() if found == name), None)

        x, y, width, height = self._place_of(wait_until(button, f"“{name}” in the tool bar"))
        self.click_at(x + width / 2, y + height / 2)

    # What it shows, asked over the accessibility bus

    def _application(self):
        if self._accessibility is None:
            os.environ.update(self._stage.environment)  # the bus is looked up there, once a process
            import gi

            gi.require_version("Atspi", "2.0")
            from gi.repository import Atspi, GLib

            Atspi.set_timeout(2000, 5000)
            self._accessibility = Atspi
            self._gone = GLib.GError
        desktop = self._accessibility.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is not None and application.get_process_id() == self.process.pid:
                application.set_cache_mask(self._accessibility.Cache.NONE)
                return application
        return None

    def _children(self, item):
        return [item.get_child_at_index(index) for index in range(item.get_child_count())]

    def _is_showing(self, item):
        return item.get_state_set().contains(self._accessibility.StateType.SHOWING)

    def _walk(self, root=None, without=None):
        """What can be seen below an item, each with its name, except what has that one name. Parts of the tree may go while
        it is walked: a window that closes."""
        waiting = [root or self._application()]
        while waiting:
            item = waiting.pop(0)
            try:
                if item is not None and self._is_showing(item):
                    name = item.get_name()
                    if without is None or name != without:
                        yield item, name
                        waiting += self._children(item)
            except self._gone:
                continue

    def _has_role(self, item, role):
        return role is None or item.get_role_name() == role

    def _where_it_was(self, name, role):
        item = self._found.get((name, role))
        try:
            if item is not None:
                item.clear_cache()
                if item.get_name() == name and self._has_role(item, role) and self._is_showing(item):
                    return item
        except self._gone:
            pass
        return None

    def _look_for(self, name, role):
        item = self._where_it_was(name, role)
        if item is not None:
            return item
        for item, found in self._walk(without=TOOL_BAR):  # which repeats the panels' buttons by the same names
            try:
                if found == name and self._has_role(item, role):
                    self._found[name, role] = item
                    return item
            except self._gone:
                continue
        return None

    def find(self, name, role=None):
        """The control that a screen reader calls so; it is visible."""
        try:
            return wait_until(lambda: self._look_for(name, role), f"the control “{name}”", 10)
        except Impatient:
            self.check_alive()
            raise

    def shows(self, name, role=None):
        return self._look_for(name, role) is not None

    def place(self, name, role=None):
        return self._place_of(self.find(name, role))

    def _place_of(self, item):
        """In pixels of the screen; the program tells it before its scaling."""
        area = item.get_extents(self._accessibility.CoordType.SCREEN)
        scale = float(self._stage.environment.get("QT_SCALE_FACTOR", 1))
        return area.x * scale, area.y * scale, area.width * scale, area.height * scale

    def origin(self):
        """Where the content of the main window begins on the screen."""
        return self.place("Larkspin", "frame")[:2]

    def value(self, name):
        return round(self.find(name, "slider").get_current_value())

    def text(self, name):
        item = self.find(name, "text")
        return item.get_text(0, item.get_character_count())

    def items(self, name="Playlist"):
        """The labels in a list."""
        box = self.find(name, "list")
        return [box.get_child_at_index(index).get_name() for index in range(box.get_child_count())]

    def selected(self, name="Playlist"):
        """The index of the selected item in a list, -1 for none."""
        box = self.find(name, "list")
        for index in range(box.get_child_count()):
            if box.get_child_at_index(index).get_state_set().contains(self._accessibility.StateType.SELECTED):
                return index
        return -1

    def focus(self, name, role=None):
        """Gives a control the keys, as a screen reader does."""
        item = self.find(name, role)
        item.grab_focus()
        wait_until(lambda: item.get_state_set().contains(self._accessibility.StateType.FOCUSED), f"“{name}” to have the focus")

    def showing(self, without=None):
        """All that can be seen of the program, as a screen reader lists it, except what has that one name."""
        return (item for item, _ in self._walk(without=without))

    def says(self, beginning):
        return any(name.startswith(beginning) for _, name in self._walk())

    def box_says(self, beginning):
        """Whether a message box that says so is open."""
        return self._box(beginning) is not None

    def _box(self, beginning):
        return next((box for box in self._boxes()
                     if any(name.startswith(beginning) for _, name in self._walk(box))), None)

    def _boxes(self):
        application = self._application()
        for index in range(application.get_child_count() if application is not None else 0):
            try:
                window = application.get_child_at_index(index)
                if window is not None and self._has_role(window, "alert"):
                    yield window
            except self._gone:
                continue

    def _is(self, item, state):
        try:
            item.clear_cache()
            return item.get_state_set().contains(state)
        except self._gone:
            return False

    def await_box(self, beginning, seconds=20):
        """The message box that says so, when it has the keys: it is seen before it gets them."""
        box = wait_until(lambda: self._box(beginning), f"the message “{beginning}”", seconds)
        wait_until(lambda: self._is(box, self._accessibility.StateType.ACTIVE), f"“{beginning}” to have the keys")
        return box

    def answer_box(self, beginning, seconds=20):
        """Waits for the message box that says so, and presses its button with the key that does."""
        box = self.await_box(beginning, seconds)
        self.press("Return")
        wait_until(lambda: not self._is(box, self._accessibility.StateType.SHOWING), f"“{beginning}” to go")

    def status(self, beginning):
        """A text that begins so now, as a function that tells what it has become: quicker than the whole tree is walked,
        for what is soon over."""
        item = wait_until(lambda: next((item for item, name in self._walk() if name.startswith(beginning)), None),
                          f"the status “{beginning}”")

        def now():
            item.clear_cache()
            return item.get_name()

        return now

    # What a screen reader does with it

    def act(self, name, role):
        """Presses a button, checks a box."""
        self.find(name, role).do_action(0)

    def set_value(self, name, value):
        self.find(name, "slider").set_current_value(value)

    # What a user does with it

    def add(self, path):
        """Adds a file to the playlist through the Open dialog."""
        before = len(self.items())
        self.click("Open audio file", "push button")
        self.answer_file_dialog("^Open audio", path)
        wait_until(lambda: len(self.items()) == before + 1, "the new item in the list")

    def answer_file_dialog(self, title, path, back_to="^Larkspin$"):
        """Types a path, and returns when the keys are those of the window to which the dialog belongs; with None for that,
        when the dialog is gone: something else may have the keys then."""
        self.wait_for_window(title)
        self.type(path)
        self.press("Return")
        self.wait_for_no_window(title)
        if back_to is not None:
            self.wait_for_window(back_to)

    def wait_for_window(self, title):
        """Returns when a window of this title is there and has the keys."""
        windows = wait_until(lambda: self.windows(title), f"a window “{title}”")
        self._xdotool("windowactivate", "--sync", windows[0])

    def wait_for_no_window(self, title):
        wait_until(lambda: not self.windows(title), f"the window “{title}” to go")

    def pick(self, label):
        """Clicks an item of the playlist, which loads it."""
        self.click(label, "list item")

    def slide(self, name, value):
        """Clicks on a slider so that it stands at the value: once where the value should be, then beside it."""
        control = self.find(name, "slider")
        low, high = control.get_minimum_value(), control.get_maximum_value()
        x, y, width, height = self.place(name, "slider")
        handle = min(height, 20)
        target = x + handle / 2 + (value - low) / (high - low) * (width - handle)
        for _ in range(30):
            self.click_at(target, y + height / 2)
            reached = self.value(name)
            if reached == value:
                return
            target += 1 if reached < value else -1
        raise Impatient(f"“{name}” cannot be set to {value} with the mouse: it stands at {reached}")

    def choose(self, number, text):
        """Picks the item that begins so in a drop-down list, the lists being counted from 0."""
        def lists():
            return [item for item in self.showing() if item.get_role_name() == "combo box"]

        box = wait_until(lambda: len(lists()) > number and lists()[number], "the drop-down list")
        x, y, width, height = self._place_of(box)
        self.click_at(x + width / 2, y + height / 2)
        self.type(text)
        self.press("Return")

    def enter(self, name, text):
        """Types a text into a box in place of what it holds."""
        self.click(name, "text", times=3)
        self.type(text)
        wait_until(lambda: self.text(name) == text, f"“{text}” in “{name}”")
