#pragma once

#include "QVPlatform/Export.h"
#include "QVPlatform/Object.h"

/// The base of note generators; without operations or state of its own.
class QV_EXPORT QVNoteGenerator : public qv::Object {};
