// The item in the panel: a text with a menu.
import Clutter from 'gi://Clutter';
import St from 'gi://St';

import * as Main from 'resource:///org/gnome/shell/ui/main.js';
import * as PanelMenu from 'resource:///org/gnome/shell/ui/panelMenu.js';
import * as PopupMenu from 'resource:///org/gnome/shell/ui/popupMenu.js';

import {keyHint, rowOfCharacter} from './menuRows.js';

export class PanelItem {
    /** `rowChosen` gets the row's index. */
    constructor(rowChosen) {
        this._rowChosen = rowChosen;
        this._button = null;
        this._rows = [];
        this._items = []; // one for each row
    }

    destroy() {
        this._button?.destroy();
        this._button = null;
    }

    /** Shows the item, from the first time on. */
    setTexts(title, toolTip) {
        if (!this._button)
            this._show();
        this._title.text = title;
        this._button.accessible_name = toolTip;
    }

    /** Replaces the menu's rows, also while it is open. */
    setRows(rows) {
        this._rows = rows;
        if (this._button)
            this._fillMenu();
    }

    _show() {
        this._button = new PanelMenu.Button(0.5, 'Vantrel');
        this._title = new St.Label({y_align: Clutter.ActorAlign.CENTER});
        this._button.add_child(this._title);
        this._button.menu.actor.connect('key-press-event', (_actor, event) => this._keyPressed(event));
        this._fillMenu();
        Main.panel.addToStatusArea('vantrel', this._button);
    }

    _fillMenu() {
        const {menu} = this._button;
        const selected = this._items.findIndex(item => item.active);
        menu.removeAll();
        this._items = this._rows.map((row, index) => this._newItem(row, index));
        this._items.forEach(item => menu.addMenuItem(item));
        // The focus went with the former items; without it no key would reach the menu.
        if (menu.isOpen)
            (this._items[selected]?.can_focus ? this._items[selected] : menu.actor).grab_key_focus();
    }

    _newItem([title, key, isEnabled, isSeparator], index) {
        if (isSeparator)
            return new PopupMenu.PopupSeparatorMenuItem();
        const item = new PopupMenu.PopupMenuItem(title, {reactive: isEnabled, can_focus: isEnabled});
        if (key) {
            item.label.x_expand = true;
            item.add_child(new St.Label({text: keyHint(key), opacity: 160}));
        }
        item.connect('activate', () => this._rowChosen(index));
        return item;
    }

    // A row's key, with Control, chooses it while the menu is open.
    _keyPressed(event) {
        if (!(event.get_state() & Clutter.ModifierType.CONTROL_MASK))
            return Clutter.EVENT_PROPAGATE;
        const character = String.fromCodePoint(Clutter.keysym_to_unicode(event.get_key_symbol()));
        const index = rowOfCharacter(this._rows, character);
        if (index < 0)
            return Clutter.EVENT_PROPAGATE;
        this._button.menu.close();
        this._rowChosen(index);
        return Clutter.EVENT_STOP;
    }
}
