#pragma once

#include "QVPlatform/OrderedSet.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QVEmail;
class QVPhoneNumber;
class QVPostalAddress;

/// A string that may be absent (UTF-8). Absent is not empty.
using QVString = std::optional<std::string>;

/// Sets that are shared by reference; null when absent. Not synchronised.
using QVHandleSet = std::shared_ptr<qv::OrderedSet<std::string>>;
using QVEmailSet = std::shared_ptr<qv::OrderedSet<std::shared_ptr<const QVEmail>>>;
using QVPhoneNumberSet = std::shared_ptr<qv::OrderedSet<std::shared_ptr<const QVPhoneNumber>>>;

/// What a profile holds of each kind, in its order. The entries never change and are never null.
using QVEmailList = std::vector<std::shared_ptr<const QVEmail>>;
using QVPhoneNumberList = std::vector<std::shared_ptr<const QVPhoneNumber>>;
using QVPostalAddressList = std::vector<std::shared_ptr<const QVPostalAddress>>;
