"""The icon in the panel."""

from virtualdesktop import wait_until


def icon_of(program, **config):
    """Starts the program, takes the panel's picture once it rests, stops the program."""
    program.pin(**config)
    program.start()
    panel = program.desktop.panel
    wait_until(panel.shows_icon, "the icon never shows")
    program.desktop.screen.settled_picture()
    picture = panel.picture().tobytes()
    assert program.stop() == 0
    wait_until(lambda: not panel.items(), "the icon stays after the program's end")
    return picture


def test_item_tells_hosts_what_it_is(program):
    tray = program.start()
    assert tray.read("Category") == "ApplicationStatus"
    assert tray.read("Status") == "Active"
    assert tray.read("ItemIsMenu") is False
    assert tray.icon_name.endswith("-symbolic")
    assert tray.read("IconThemePath")
    assert "Quillbar · ⌥⌘T" in tray.tool_tip()


def test_panel_shows_the_configured_symbol(program):
    heart = icon_of(program, iconSymbol="heart.fill")
    bolt = icon_of(program, iconSymbol="bolt.fill")
    assert heart != bolt


def test_icon_comes_with_a_panel_that_starts_late(program):
    panel = program.desktop.panel
    panel.kill()
    program.launch()
    wait_until(lambda: program.desktop.bus.owner("com.quillbar.Quillbar"),
               "the program does not start without a panel")
    panel.start()
    program.tray()
    wait_until(panel.shows_icon, "the icon does not come")
