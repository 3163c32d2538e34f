// All keys for the settings window's recorder, so that no shortcut of the desktop gets the chord first. Only while that
// window has the focus, and a notice on the screen says so. Any click ends it, and so does everything that takes the
// focus away.
import Clutter from 'gi://Clutter';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';

import {newNotice} from './screenMessage.js';

const WINDOW_CLASS = 'org.vantrel.Vantrel';

function isOurs(window) {
    return window !== null && window.get_wm_class() === WINDOW_CLASS;
}

/** Whether a Super key goes down first. The shell keeps its release to itself when no other key follows. */
function isSuperAlone(event) {
    const others = Clutter.ModifierType.SHIFT_MASK | Clutter.ModifierType.CONTROL_MASK | Clutter.ModifierType.MOD1_MASK;
    return event.type() === Clutter.EventType.KEY_PRESS && !(event.get_state() & others) &&
        [Clutter.KEY_Super_L, Clutter.KEY_Super_R].includes(event.get_key_symbol());
}

export class KeyCapture {
    /** `key` gets an X keycode, the modifiers before the key, and whether it was pressed; `ended` is told when the
     *  capture ends by itself. */
    constructor({key, ended}) {
        this._key = key;
        this._ended = ended;
        this._notice = null;
        this._grab = null;
    }

    destroy() {
        this.end();
    }

    /** False when the settings window does not have the keyboard. */
    begin() {
        if (this._grab)
            return true;
        // A window keeps the focus below what the shell itself asks for, such as a password.
        if (Main.modalCount > 0 || !isOurs(global.display.focus_window))
            return false;
        // Keys reach only what is reactive.
        this._notice = newNotice('Recording a shortcut for Vantrel', {reactive: true});
        this._notice.connect('captured-event', (_actor, event) => this._take(event));
        this._grab = Main.pushModal(this._notice);
        this._focusSignal = global.display.connect('notify::focus-window', () => {
            if (!isOurs(global.display.focus_window))
                this._endByItself();
        });
        return true;
    }

    end() {
        if (this._focusSignal)
            global.display.disconnect(this._focusSignal);
        this._focusSignal = 0;
        if (this._grab)
            Main.popModal(this._grab);
        this._grab = null;
        this._notice?.destroy();
        this._notice = null;
    }

    _endByItself() {
        this.end();
        this._ended();
    }

    _take(event) {
        switch (event.type()) {
        case Clutter.EventType.KEY_PRESS:
        case Clutter.EventType.KEY_RELEASE:
            // It would seem to be held for good; the state of a key that follows has it.
            if (!isSuperAlone(event))
                this._key(event.get_key_code(), event.get_state(), event.type() === Clutter.EventType.KEY_PRESS);
            return Clutter.EVENT_STOP;
        case Clutter.EventType.BUTTON_PRESS:
        case Clutter.EventType.TOUCH_BEGIN:
            this._endByItself();
            return Clutter.EVENT_STOP;
        default:
            return Clutter.EVENT_PROPAGATE;
        }
    }
}
