// The floor's half in the shell: tells of one chord, with the pointer's place, and puts the pointer where it is told.
// It knows two displays and no errors.
import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

const XML = `<node><interface name="org.vantrel.Floor1">
<method name="Warp"><arg type="d" direction="in"/><arg type="d" direction="in"/></method>
<signal name="Pressed"><arg type="d"/><arg type="d"/></signal>
</interface></node>`;

export default class Floor extends Extension {
    enable() {
        this._tracker = global.backend.get_cursor_tracker();
        this._device = global.stage.get_context().get_backend().get_default_seat().create_virtual_device(
            Clutter.InputDeviceType.POINTER_DEVICE);
        this._object = Gio.DBusExportedObject.wrapJSObject(XML, this);
        this._object.export(Gio.DBus.session, '/org/vantrel/Floor');
        this._name = Gio.bus_own_name(Gio.BusType.SESSION, 'org.vantrel.Floor', Gio.BusNameOwnerFlags.NONE,
            null, null, null);
        this._action = global.display.grab_accelerator('<Control><Alt><Shift><Super>d',
            Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
        Main.wm.allowKeybinding(Meta.external_binding_name_for_action(this._action), Shell.ActionMode.ALL);
        this._signal = global.display.connect('accelerator-activated', (_display, action) => {
            if (action !== this._action)
                return;
            const [place] = this._tracker.get_pointer();
            this._object.emit_signal('Pressed', new GLib.Variant('(dd)', [place.x, place.y]));
        });
    }

    disable() {
        global.display.disconnect(this._signal);
        global.display.ungrab_accelerator(this._action);
        Gio.bus_unown_name(this._name);
        this._object.unexport();
        this._device = null;
    }

    // Over the middle of both displays, as no edge may hold the pointer up.
    Warp(x, y) {
        const [left, entered] = [...Main.layoutManager.monitors].sort((monitor, other) =>
            this._holds(monitor, x) - this._holds(other, x));
        for (const {x: cornerX, y: cornerY, width, height} of [left, entered])
            this._move(cornerX + width / 2, cornerY + height / 2);
        this._move(x, y);
    }

    _holds(monitor, x) {
        return Number(x >= monitor.x && x < monitor.x + monitor.width);
    }

    _move(x, y) {
        this._device.notify_absolute_motion(GLib.get_monotonic_time(), x, y);
    }
}
