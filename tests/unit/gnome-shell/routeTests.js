import {route} from '../../../extensions/gnome-shell/vantrel@vantrel.org/route.js';

import {expectEqual, expectThrow, runTests} from './runner.js';

const LEFT = {x: -1000, y: 0, width: 1000, height: 500};
const MAIN = {x: 0, y: 0, width: 1512, height: 982};
const BELOW = {x: 0, y: 982, width: 800, height: 600};
const MONITORS = [MAIN, LEFT, BELOW];

const CENTRE_OF_LEFT = [-500, 250];
const CENTRE_OF_MAIN = [756, 491];
const CENTRE_OF_BELOW = [400, 1282];

runTests({
    route_insideOneDisplay_isStraight() {
        expectEqual(route(MONITORS, [10, 10], [1500, 900]), [[1500, 900]]);
    },

    route_fromTheEdgeOfTheDisplay_leadsOverItsCentre() {
        for (const from of [[0, 100], [0.75, 100], [100, 0], [1511, 100], [1511.5, 100], [100, 981]])
            expectEqual(route(MONITORS, from, [20, 20]), [CENTRE_OF_MAIN, [20, 20]]);
        for (const from of [[1, 1], [1510.75, 980.75]])
            expectEqual(route(MONITORS, from, [20, 20]), [[20, 20]]);
        expectEqual(route(MONITORS, [-1000, 10], [-1, 10]), [CENTRE_OF_LEFT, [-1, 10]]);
    },

    route_toAnotherDisplay_leadsOverBothCentres() {
        expectEqual(route(MONITORS, [10, 10], [-999, 499]), [CENTRE_OF_MAIN, CENTRE_OF_LEFT, [-999, 499]]);
        expectEqual(route(MONITORS, [-999, 499], [10, 1000]), [CENTRE_OF_LEFT, CENTRE_OF_BELOW, [10, 1000]]);
    },

    route_whereDisplaysTouch_countsToTheOneThatBeginsThere() {
        expectEqual(route(MONITORS, [0, 100], [-0.25, 100]), [CENTRE_OF_MAIN, CENTRE_OF_LEFT, [-0.25, 100]]);
        expectEqual(route(MONITORS, [5, 981.75], [5, 982]), [CENTRE_OF_MAIN, CENTRE_OF_BELOW, [5, 982]]);
    },

    route_fromOrToNoDisplay_isStraight() {
        expectEqual(route(MONITORS, [1512, 10], [-500, 10]), [[-500, 10]]);
        expectEqual(route(MONITORS, [10, 10], [-500, 500]), [[-500, 500]]);
        expectEqual(route([], [10, 10], [20, 20]), [[20, 20]]);
    },

    route_toWhatIsNoNumber_throws() {
        for (const to of [[NaN, 10], [10, NaN], [Infinity, 10], [10, -Infinity]])
            expectThrow(RangeError, () => route(MONITORS, [10, 10], to));
    },
});
