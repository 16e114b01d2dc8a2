#pragma once

#include "QVPlatform/Image.h"
#include "QVPlatform/OrderedSet.h"
#include "QVSocialSearch/QVSocialSearchTypes.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QVBusinessCardField;
class QVVeltoContactField;

/// Collections that are shared by reference; null when absent. Not synchronised.
using QVStringArray = std::shared_ptr<std::vector<std::string>>;
using QVImageArray = std::shared_ptr<std::vector<std::shared_ptr<qv::Image>>>;
using QVImageSet = std::shared_ptr<qv::OrderedSet<std::shared_ptr<qv::Image>>>;
using QVFieldArray = std::shared_ptr<std::vector<std::shared_ptr<QVBusinessCardField>>>;
using QVContactFieldArray = std::shared_ptr<std::vector<std::shared_ptr<QVVeltoContactField>>>;
using QVContactFieldSet = std::shared_ptr<qv::OrderedSet<std::shared_ptr<QVVeltoContactField>>>;
