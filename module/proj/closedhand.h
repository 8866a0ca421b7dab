#pragma once

#include <QPixmap>

/** A closed hand, as a drag's cursor: a drag takes only pictures, and not the system's shapes. */
QPixmap closedHand();
