#include "Output/JSON.h"

#include <nlohmann/json.hpp>

namespace qvhost::JSON {

Value from(const QVString& string) {
    return string ? Value(*string) : Value(nullptr);
}

Value from(const QVStringArray& strings) {
    return strings ? Value(*strings) : Value(nullptr);
}

Value from(const QVHandleSet& handles) {
    if (!handles) return nullptr;
    Value list = Value::array();
    for (const std::string& handle : *handles)
        list.push_back(handle);
    return list;
}

std::string text(const Value& value) {
    return value.dump(2, ' ', /*ensure_ascii=*/false, Value::error_handler_t::replace) + "\n";
}

std::string line(const Value& value) {
    return value.dump(-1, ' ', /*ensure_ascii=*/false, Value::error_handler_t::replace) + "\n";
}

}  // namespace qvhost::JSON
