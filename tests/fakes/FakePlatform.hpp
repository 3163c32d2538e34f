#pragma once

#include "Vantrel/Desktop/GLibURLParser.hpp"
#include "Vantrel/Platform/Platform.hpp"
#include "tests/fakes/FakeApplication.hpp"
#include "tests/fakes/FakeDisplays.hpp"
#include "tests/fakes/FakeHotKeys.hpp"
#include "tests/fakes/FakeMainQueue.hpp"
#include "tests/fakes/FakePointer.hpp"
#include "tests/fakes/FakePreferencesWindowView.hpp"
#include "tests/fakes/FakeSoundPlayer.hpp"
#include "tests/fakes/FakeStatusBar.hpp"
#include "tests/fakes/FakeUUIDGenerator.hpp"
#include "tests/fakes/FakeUserDefaults.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// A platform without a desktop: tests set its state, crank its clock, and read what was asked of it in one journal.
/// URLs are split by the real parser, which needs no desktop.
class FakePlatform {
  public:
    [[nodiscard]] Platform platform() {
        return Platform{application,
                        displays,
                        pointer,
                        pointer,
                        hotKeys,
                        mainQueue,
                        mainQueue,
                        defaults,
                        statusBar,
                        sounds,
                        uuids,
                        urls,
                        preferencesWindowViews};
    }

    Journal journal;
    FakeApplication application{journal};
    FakeDisplays displays{journal};
    FakePointer pointer{journal};
    FakeHotKeys hotKeys{journal};
    FakeMainQueue mainQueue{journal};
    FakeUserDefaults defaults{journal};
    FakeStatusBar statusBar{journal};
    FakeSoundPlayer sounds{journal};
    FakeUUIDGenerator uuids;
    desktop::GLibURLParser urls;
    FakePreferencesWindowViewFactory preferencesWindowViews{journal};
};

}  // namespace vantrel::fake
