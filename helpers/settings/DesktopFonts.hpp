#pragma once

#include <QFont>

namespace vantrel::qt {

/// The desktop's font in the layout's sizes. A point of the layout is a device-independent pixel, as its lengths are;
/// on a desktop whose own font is larger than the 13 points that the layout is made for, everything grows with it.
QFont titleFont();
QFont recorderFont();

}  // namespace vantrel::qt
