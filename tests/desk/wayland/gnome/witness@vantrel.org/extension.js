// Only for tests: evaluates what it is sent, so that a test sees what a person sees and moves what a person moves.
import Clutter from 'gi://Clutter';
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';
import Shell from 'gi://Shell';
import St from 'gi://St';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import {getInputSourceManager} from 'resource:///org/gnome/shell/ui/status/keyboard.js';
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

const XML = `<node><interface name="org.vantrel.Witness1">
<method name="Evaluate"><arg type="s" direction="in"/><arg type="s" direction="out"/></method>
</interface></node>`;

export default class Witness extends Extension {
    enable() {
        this._mouse = global.stage.get_context().get_backend().get_default_seat().create_virtual_device(
            Clutter.InputDeviceType.POINTER_DEVICE);
        this._object = Gio.DBusExportedObject.wrapJSObject(XML, this);
        this._object.export(Gio.DBus.session, '/org/vantrel/Witness');
        this._name = Gio.bus_own_name(Gio.BusType.SESSION, 'org.vantrel.Witness', Gio.BusNameOwnerFlags.NONE,
            null, null, null);
    }

    disable() {
        Gio.bus_unown_name(this._name);
        this._object.unexport();
        this._mouse = null;
    }

    Evaluate(expression) {
        // eslint-disable-next-line no-new-func
        const value = new Function('witness', 'Main', 'Clutter', 'Gio', 'GLib', 'Shell', 'St',
            `return (${expression});`)(this, Main, Clutter, Gio, GLib, Shell, St);
        return JSON.stringify(value) ?? 'null';
    }

    chooseLayout(number) {
        getInputSourceManager().inputSources[number].activate(false);
    }

    /** Writes down in `texts` what a label shows from now on, however briefly. */
    watchText(label) {
        this.texts = [];
        label.connect('notify::text', () => this.texts.push(label.text));
    }

    /** Of what is on the screen: an actor, or a display. */
    centreOf(thing) {
        const [x, y] = thing.get_transformed_position ? thing.get_transformed_position() : [thing.x, thing.y];
        return [x + thing.width / 2, y + thing.height / 2];
    }

    // By the middle of the display, so that no edge holds the pointer up.
    moveTo(x, y) {
        const monitor = Main.layoutManager.monitors.find(candidate => x >= candidate.x && y >= candidate.y &&
            x < candidate.x + candidate.width && y < candidate.y + candidate.height);
        const now = GLib.get_monotonic_time();
        this._mouse.notify_absolute_motion(now, monitor.x + monitor.width / 2, monitor.y + monitor.height / 2);
        this._mouse.notify_absolute_motion(now, x, y);
    }
}
