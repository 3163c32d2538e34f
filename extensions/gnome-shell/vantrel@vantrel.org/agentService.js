// The interface on the session bus, for one program alone: whoever has the agent's name.
import Gio from 'gi://Gio';
import GLib from 'gi://GLib';

import {HotKeys} from './hotKeys.js';
import {KeyCapture} from './keyCapture.js';
import {PanelItem} from './panelItem.js';
import {Pointer} from './pointer.js';
import {ScreenMessage} from './screenMessage.js';

const AGENT = 'org.vantrel.GnomeAgent';
const NAME = 'org.vantrel.Shell';
const PATH = '/org/vantrel/Shell';
const INTERFACE = 'org.vantrel.Shell1';

// Goes up when an older agent would misunderstand.
const VERSION = 1;

// Places are in the coordinates of Mutter's layout. Rows are (title, key, is enabled, is a separator).
const XML = `<node><interface name="${INTERFACE}">
<property name="Version" type="u" access="read"/>
<method name="GetPointer"><arg type="d" direction="out"/><arg type="d" direction="out"/></method>
<method name="Warp"><arg type="d" direction="in"/><arg type="d" direction="in"/></method>
<method name="Grab">
  <arg type="u" direction="in"/><arg type="as" direction="in"/><arg type="b" direction="out"/>
</method>
<method name="Ungrab"><arg type="u" direction="in"/></method>
<method name="SetItem"><arg type="s" direction="in"/><arg type="s" direction="in"/></method>
<method name="SetMenu"><arg type="a(ssbb)" direction="in"/></method>
<method name="ShowMessage"><arg type="s" direction="in"/></method>
<method name="HideMessage"/>
<method name="BeginCapture"><arg type="b" direction="out"/></method>
<method name="EndCapture"/>
<signal name="Pressed"><arg type="u"/><arg type="d"/><arg type="d"/></signal>
<signal name="RowChosen"><arg type="u"/></signal>
<signal name="Key"><arg type="u"/><arg type="u"/><arg type="b"/></signal>
<signal name="CaptureEnded"/>
</interface></node>`;

/** What one agent has of the shell, as long as it is there. */
class Client {
    constructor(emit) {
        this.pointer = new Pointer();
        this.hotKeys = new HotKeys(number => emit('Pressed', '(udd)', [number, ...this.pointer.place()]));
        this.item = new PanelItem(row => emit('RowChosen', '(u)', [row]));
        this.message = new ScreenMessage();
        this.capture = new KeyCapture({
            key: (keycode, state, isPress) => emit('Key', '(uub)', [keycode, state, isPress]),
            ended: () => emit('CaptureEnded', '()', []),
        });
    }

    destroy() {
        for (const part of [this.capture, this.message, this.item, this.hotKeys, this.pointer])
            part.destroy();
    }
}

// What each method does for the agent; its result is the answer.
const METHODS = {
    GetPointer: client => new GLib.Variant('(dd)', client.pointer.place()),
    Warp: (client, x, y) => client.pointer.warp(x, y),
    Grab: (client, number, accelerators) => new GLib.Variant('(b)', [client.hotKeys.grab(number, accelerators)]),
    Ungrab: (client, number) => client.hotKeys.ungrab(number),
    SetItem: (client, title, toolTip) => client.item.setTexts(title, toolTip),
    SetMenu: (client, rows) => client.item.setRows(rows),
    ShowMessage: (client, text) => client.message.show(text),
    HideMessage: client => client.message.hide(),
    BeginCapture: client => new GLib.Variant('(b)', [client.capture.begin()]),
    EndCapture: client => client.capture.end(),
};

export class AgentService {
    constructor() {
        this._owner = null;
        this._client = null;
        for (const name of Object.keys(METHODS))
            this[`${name}Async`] = (parameters, invocation) => this._answer(name, parameters, invocation);
        this._object = Gio.DBusExportedObject.wrapJSObject(XML, this);
        this._object.export(Gio.DBus.session, PATH);
        this._watch = Gio.bus_watch_name(Gio.BusType.SESSION, AGENT, Gio.BusNameWatcherFlags.NONE,
            (_connection, _name, owner) => this._agentCame(owner), () => this._agentWent());
        this._name = Gio.bus_own_name(Gio.BusType.SESSION, NAME, Gio.BusNameOwnerFlags.NONE, null, null, null);
    }

    destroy() {
        // The way in is closed also if something cannot be taken down.
        Gio.bus_unown_name(this._name);
        Gio.bus_unwatch_name(this._watch);
        this._object.unexport();
        this._object = null;
        this._agentWent();
    }

    get Version() {
        return VERSION;
    }

    _agentCame(owner) {
        this._agentWent();
        this._owner = owner;
        this._client = new Client((signal, type, values) => Gio.DBus.session.emit_signal(
            owner, PATH, INTERFACE, signal, new GLib.Variant(type, values)));
    }

    _agentWent() {
        this._owner = null;
        this._client?.destroy();
        this._client = null;
    }

    // Without an answer the agent would wait: so there is one whatever happens.
    _answer(name, parameters, invocation) {
        if (this._client === null || invocation.get_sender() !== this._owner) {
            invocation.return_dbus_error('org.freedesktop.DBus.Error.AccessDenied', 'this is for the Vantrel agent');
            return;
        }
        try {
            invocation.return_value(METHODS[name](this._client, ...parameters) ?? null);
        } catch (error) {
            console.error(error); // Many calls are made without waiting for their answer.
            invocation.return_dbus_error('org.freedesktop.DBus.Error.Failed', `${error}`);
        }
    }
}
