// A text on the screen for a moment, for when the panel with its item is not to be seen. Clicks pass through it.
import Clutter from 'gi://Clutter';
import St from 'gi://St';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';

export class ScreenMessage {
    constructor() {
        this._notice = null;
    }

    destroy() {
        this.hide();
    }

    show(text) {
        this.hide();
        if (Main.layoutManager.panelBox.visible)
            return;
        this._notice = newNotice(text);
    }

    hide() {
        this._notice?.destroy();
        this._notice = null;
    }
}

/** A text at the top of the display that has the pointer, above everything; with further properties of the actor. */
export function newNotice(text, properties = {}) {
    const {x, y, width} = Main.layoutManager.currentMonitor ?? Main.layoutManager.primaryMonitor;
    // Centred in a row of its own: a text that was measured and placed from here fills the shell's log with complaints
    // when it goes before it was drawn.
    const label = new St.Label({text, style_class: 'vantrel-notice', x_align: Clutter.ActorAlign.CENTER});
    const notice = new St.Bin({x, y: y + 48, width, child: label, ...properties});
    Main.uiGroup.add_child(notice);
    return notice;
}
