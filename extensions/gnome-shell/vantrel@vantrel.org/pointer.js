// Reads and moves the mouse pointer.
import Clutter from 'gi://Clutter';
import GLib from 'gi://GLib';
import Meta from 'gi://Meta';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';

import {route} from './route.js';

export class Pointer {
    constructor() {
        // As GNOME 45 has it, and as later ones do.
        this._tracker = global.backend.get_cursor_tracker?.() ?? Meta.CursorTracker.get_for_display(global.display);
        const backend = global.stage.get_context?.().get_backend() ?? Clutter.get_default_backend();
        this._device = backend.get_default_seat().create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
    }

    destroy() {
        this._device = null;
        this._tracker = null;
    }

    /** [x, y], also while a button is held or a menu is open. */
    place() {
        const [place] = this._tracker.get_pointer();
        return [place.x, place.y];
    }

    warp(x, y) {
        for (const place of route(Main.layoutManager.monitors, this.place(), [x, y]))
            this._device.notify_absolute_motion(GLib.get_monotonic_time(), ...place);
    }
}
