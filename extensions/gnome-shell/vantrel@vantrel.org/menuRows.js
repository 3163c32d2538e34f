// The agent's rows of the menu, each [title, key, is enabled, is a separator]. No part of the shell is needed here.

/** What stands beside the title of a row with a key. */
export function keyHint(key) {
    return `Ctrl+${key.toUpperCase()}`;
}

/** The index of the row that a character, in either case, chooses when it is typed with Control; -1 for none. */
export function rowOfCharacter(rows, character) {
    const typed = character.toLowerCase();
    return rows.findIndex(([, key, isEnabled]) => isEnabled && key === typed);
}
