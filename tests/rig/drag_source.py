"""A window from which data can be dragged: drag_source.py MIME_TYPE DATA

Ends when the drag has ended.
"""

import sys

TITLE = "Drag source"


def main(mime_type, data):
    import gi
    gi.require_version("Gdk", "4.0")
    gi.require_version("Gtk", "4.0")
    from gi.repository import Gdk, GLib, Gtk

    loop = GLib.MainLoop()
    source = Gtk.DragSource(content=Gdk.ContentProvider.new_for_bytes(mime_type, GLib.Bytes.new(data.encode())))
    source.connect("drag-end", lambda *_: loop.quit())
    label = Gtk.Label(label="Drag me")
    label.add_controller(source)
    Gtk.Window(title=TITLE, default_width=150, default_height=100, child=label, visible=True)
    loop.run()


if __name__ == "__main__":
    main(*sys.argv[1:])
