#include "QVPlatform/Object.h"

#include <typeinfo>

namespace qv {

std::string Object::description() const {
    return typeid(*this).name();
}

}  // namespace qv
