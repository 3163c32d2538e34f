// Key combinations that the shell catches for the agent, whichever window has the focus.
import Meta from 'gi://Meta';
import Shell from 'gi://Shell';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';

export class HotKeys {
    /** `pressed` gets the number of a hot key, once for each press, however long the key is held. */
    constructor(pressed) {
        this._grabs = new Map(); // the shell's numbers of each hot key's accelerators
        this._signal = global.display.connect('accelerator-activated', (_display, action) => {
            for (const [number, actions] of this._grabs) {
                if (actions.includes(action))
                    pressed(number);
            }
        });
    }

    destroy() {
        global.display.disconnect(this._signal);
        for (const number of [...this._grabs.keys()])
            this.ungrab(number);
    }

    /** Gives the hot key these accelerators, all of them; false when one is taken: then it has none. */
    grab(number, accelerators) {
        this.ungrab(number);
        const actions = [];
        for (const accelerator of accelerators) {
            const action = global.display.grab_accelerator(accelerator, Meta.KeyBindingFlags.IGNORE_AUTOREPEAT);
            if (action === Meta.KeyBindingAction.NONE) {
                actions.forEach(release);
                return false;
            }
            // In the overview and in menus as well.
            Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), Shell.ActionMode.ALL);
            actions.push(action);
        }
        this._grabs.set(number, actions);
        return true;
    }

    ungrab(number) {
        this._grabs.get(number)?.forEach(release);
        this._grabs.delete(number);
    }
}

function release(action) {
    Main.wm.allowKeybinding(Meta.external_binding_name_for_action(action), Shell.ActionMode.NONE);
    global.display.ungrab_accelerator(action);
}
