"""The trays of real desktops, each set up with nothing but a panel and its tray."""

import os

from session import Session, until

WHITE, BLACK, MID_GRAY = b"\xff\xff\xff", b"\x00\x00\x00", b"\x76\x76\x76"


class Host:
    """A tray on a session of its own."""

    name = ""
    programs = ()
    # What starts the panel, and with which variables of its environment.
    command, variables = (), {}
    # Of the screen, in logical pixels.
    width, height, scale = 1024, 800, 1
    # The bar is at the top of the screen.
    bar_height = 26
    ink = WHITE
    # Unlit cells are left out where it is not known whether the bar is light or dark.
    shows_ghosts = True
    # The mouse button that opens the menu.
    menu_button = 1
    # "readout" or "digits", and how many pixels a cell of it has.
    shape = "digits"

    def __init__(self, hears_programs=False, starts=True):
        self.session = Session(self.width * self.scale, self.height * self.scale, hears_programs)
        self.process = None
        self.prepare()
        if starts:
            self.start()

    def prepare(self):
        self.session.start("openbox", "--sm-disable")

    def start(self):
        self.process = self.session.start(*self.command, **self.variables)

    def kill(self):
        self.process.end(9)

    def close(self):
        self.session.close()

    def cell(self, art):
        """Pixels a cell: of digits as many as fit the square."""
        return self.scale * (2 if self.shape == "readout" else self.square // max(len(art[0]), 7))

    def find(self, shown):
        """Where on the screen the item stands, pixel for pixel; none when it does not."""
        art = shown.art(self.shape)
        if not self.shows_ghosts:
            art = [row.replace(":", ".") for row in art]
        return self.session.screen().find(art, self.cell(art), self.ink)


class XfcePanel(Host):
    name = "xfce4-panel"
    command = ("xfce4-panel", "--disable-wm-check")
    programs = ("xfce4-panel", "/usr/lib/x86_64-linux-gnu/xfce4/xfconf/xfconfd", "openbox")
    square = 22
    is_dark = True

    def prepare(self):
        super().prepare()
        self.session.write(".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", f"""\
<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{str(self.is_dark).lower()}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="{self.bar_height}"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/><value type="int" value="2"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
""")


class LightXfcePanel(XfcePanel):
    name = "xfce4-panel-light"
    is_dark = False
    ink = MID_GRAY
    shows_ghosts = False


class MatePanel(Host):
    name = "mate-panel"
    command = ("mate-panel",)
    programs = ("mate-panel", "openbox")
    shape = "readout"
    ink = MID_GRAY
    shows_ghosts = False
    menu_button = 3

    def prepare(self):
        super().prepare()
        self.session.write(".config/glib-2.0/settings/keyfile", f"""\
[org/mate/panel/general]
toplevel-id-list=['top']
object-id-list=['tray']

[org/mate/panel/toplevels/top]
expand=true
orientation='top'
size={self.bar_height}

[org/mate/panel/objects/tray]
applet-iid='NotificationAreaAppletFactory::NotificationArea'
object-type='applet'
position=0
panel-right-stick=true
toplevel-id='top'
""")


class LxqtPanel(Host):
    name = "lxqt-panel"
    command, variables = ("lxqt-panel",), {"QT_QPA_PLATFORM": "xcb"}
    programs = ("lxqt-panel", "openbox")
    square = 22
    ink = MID_GRAY
    shows_ghosts = False
    menu_button = 3

    def prepare(self):
        super().prepare()
        self.session.write(".config/lxqt/panel.conf", f"""\
[General]
panels=panel1

[panel1]
plugins=statusnotifier
position=Top
panelSize={self.bar_height}
iconSize={self.square}
width=100
width-percent=true
alignment=0
desktop=0
hidable=false
lockPanel=false

[statusnotifier]
type=statusnotifier
alignment=Right
""")


class Waybar(Host):
    """In a compositor whose one output is a window of the X display, so that a mouse can be moved."""

    name = "waybar"
    programs = ("waybar", "sway")
    variables = {"WAYLAND_DISPLAY": "wayland-1", "GDK_BACKEND": "wayland"}
    shape = "readout"
    bar_height = 24

    def configuration(self):
        return f"""\
output X11-1 resolution {self.width * self.scale}x{self.height * self.scale} scale {self.scale}
output * background #5e81ac solid_color
"""

    def prepare(self):
        configuration = self.session.write("sway.conf", self.configuration())
        bar = self.session.write("waybar.json", f"""\
{{"layer": "top", "height": {self.bar_height}, "modules-right": ["tray"]}}
""")
        style = self.session.write("waybar.css", """\
window#waybar { background: #2b303b; }
#tray { margin: 0 8px; }
""")
        self.session.start("sway", "--config", configuration, WLR_BACKENDS="x11", WLR_RENDERER="pixman",
                           SWAYSOCK=os.path.join(self.session.runtime, "sway.sock"))
        socket = os.path.join(self.session.runtime, "wayland-1")
        until(lambda: os.path.exists(socket), "the compositor")
        self.command = ("waybar", "--config", bar, "--style", style)


class DenseWaybar(Waybar):
    """On an output of twice the density."""

    name = "waybar-2x"
    scale = 2


class Swaybar(Waybar):
    """The compositor's own bar, which knows no menus and leaves each click to the item."""

    name = "swaybar"
    programs = ("swaybar", "sway")
    shape = "digits"
    # What the bar leaves between its padding.
    square = 20

    def prepare(self):
        super().prepare()
        self.command = ("swaybar", "--bar_id", "bar-0", "--socket", os.path.join(self.session.runtime, "sway.sock"))

    def configuration(self):
        # The bar is started by hand, so that it can be ended by hand.
        return super().configuration() + f"""\
bar {{
    swaybar_command true
    position top
    height {self.bar_height}
    colors background #2b303b
}}
"""


HOSTS = (XfcePanel, LightXfcePanel, MatePanel, LxqtPanel, Waybar, DenseWaybar, Swaybar)
