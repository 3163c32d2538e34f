// Does for the Vantrel agent what GNOME lets no program do: see agentService.js for what it may ask for.
import {Extension} from 'resource:///org/gnome/shell/extensions/extension.js';

import {AgentService} from './agentService.js';

export default class VantrelExtension extends Extension {
    enable() {
        this._service = new AgentService();
    }

    disable() {
        this._service.destroy();
        this._service = null;
    }
}
