import {keyHint, rowOfCharacter} from '../../../extensions/gnome-shell/vantrel@vantrel.org/menuRows.js';

import {expectEqual, runTests} from './runner.js';

const ROWS = [
    ['Vantrel', '', false, false],
    ['', '', false, true],
    ['Saved Points: none', 's', false, false],
    ['Teleport Now', '', true, false],
    ['Settings...', ',', true, false],
    ['Quit', 'q', true, false],
    ['Another', 'q', true, false],
];

runTests({
    keyHint_ofAKey_namesItAsKeyboardsDo() {
        expectEqual(keyHint('q'), 'Ctrl+Q');
        expectEqual(keyHint(','), 'Ctrl+,');
    },

    rowOfCharacter_ofARow_isTheFirstWithIt() {
        expectEqual(rowOfCharacter(ROWS, ','), 4);
        expectEqual(rowOfCharacter(ROWS, 'q'), 5);
    },

    rowOfCharacter_capital_isTheSame() {
        expectEqual(rowOfCharacter(ROWS, 'Q'), 5);
    },

    rowOfCharacter_ofADisabledRow_isNone() {
        expectEqual(rowOfCharacter(ROWS, 's'), -1);
    },

    rowOfCharacter_ofNoRow_isNone() {
        expectEqual(rowOfCharacter(ROWS, 'x'), -1);
        expectEqual(rowOfCharacter([], 'q'), -1);
    },

    // Modifier keys and arrows have no character: the shell gives the first of all.
    rowOfCharacter_ofAKeyWithoutCharacter_isNone() {
        expectEqual(rowOfCharacter(ROWS, '\0'), -1);
    },
});
