// Only for benchmarks: presses Hyper + D, and tells how long it took by the shell's own clock until the shell had the
// pointer at a place.
import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

// The place is told from the main display's corner on; the answer is in microseconds, and -1 when the pointer did not
// get there.
const XML = `<node><interface name="org.vantrel.Stopwatch1">
<method name="TimeJump">
  <arg type="d" direction="in"/><arg type="d" direction="in"/><arg type="d" direction="out"/>
</method>
</interface></node>`;

// Left Control, Alt, Shift and Super, and D, as the kernel numbers them.
const MODIFIERS = [29, 56, 42, 125];
const KEY = 32;

const PAUSE = 3; // milliseconds: the modifiers are held before the key goes down
const PATIENCE = 1000;

export default class Stopwatch extends Extension {
    enable() {
        this._tracker = global.backend.get_cursor_tracker();
        this._keyboard = global.stage.get_context().get_backend().get_default_seat().create_virtual_device(
            Clutter.InputDeviceType.KEYBOARD_DEVICE);
        this._object = Gio.DBusExportedObject.wrapJSObject(XML, this);
        this._object.export(Gio.DBus.session, '/org/vantrel/Stopwatch');
        this._name = Gio.bus_own_name(Gio.BusType.SESSION, 'org.vantrel.Stopwatch', Gio.BusNameOwnerFlags.NONE,
            null, null, null);
    }

    disable() {
        Gio.bus_unown_name(this._name);
        this._object.unexport();
        this._keyboard = null;
    }

    TimeJumpAsync([x, y], invocation) {
        const {x: cornerX, y: cornerY} = Main.layoutManager.primaryMonitor;
        this._press(MODIFIERS, Clutter.KeyState.PRESSED);
        GLib.timeout_add(GLib.PRIORITY_DEFAULT, PAUSE, () => {
            this._time([cornerX + x, cornerY + y], microseconds => {
                this._press([KEY, ...MODIFIERS], Clutter.KeyState.RELEASED);
                invocation.return_value(new GLib.Variant('(d)', [microseconds]));
            });
            return GLib.SOURCE_REMOVE;
        });
    }

    _time([x, y], done) {
        const begin = GLib.get_monotonic_time();
        let motion = 0;
        const deadline = GLib.timeout_add(GLib.PRIORITY_DEFAULT, PATIENCE, () => {
            this._tracker.disconnect(motion);
            done(-1);
            return GLib.SOURCE_REMOVE;
        });
        motion = this._tracker.connect('position-invalidated', () => {
            const [place] = this._tracker.get_pointer();
            if (place.x !== x || place.y !== y)
                return;
            const time = GLib.get_monotonic_time() - begin;
            this._tracker.disconnect(motion);
            GLib.source_remove(deadline);
            done(time);
        });
        this._press([KEY], Clutter.KeyState.PRESSED);
    }

    _press(keys, state) {
        for (const key of keys)
            this._keyboard.notify_key(GLib.get_monotonic_time(), key, state);
    }
}
