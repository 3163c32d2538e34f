// Runs the tests of a file.
import System from 'system';

/** Runs all of {name: function}, says which fail, and ends the program with 1 when one does. */
export function runTests(tests) {
    let failures = 0;
    for (const [name, test] of Object.entries(tests)) {
        try {
            test();
        } catch (error) {
            failures++;
            print(`${name} failed: ${error.message}\n${error.stack}`);
        }
    }
    print(`${Object.keys(tests).length} tests, ${failures} failed`);
    if (failures > 0)
        System.exit(1);
}

/** Compares values of JSON. */
export function expectEqual(actual, expected) {
    const [is, shouldBe] = [actual, expected].map(value => JSON.stringify(value));
    if (is !== shouldBe)
        throw new Error(`${is} should be ${shouldBe}`);
}

export function expectThrow(kind, run) {
    try {
        run();
    } catch (error) {
        if (error instanceof kind)
            return;
        throw error;
    }
    throw new Error(`no ${kind.name} was thrown`);
}
