#pragma once

#include "QVCardScan/QVVeltoContact.h"
#include "qvcardscan.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qvc {

/// A contact's fields as they are at one moment, one after the other in the note's order.
class ContactFields {
  public:
    ContactFields() = default;
    /// None for null.
    explicit ContactFields(const std::shared_ptr<QVVeltoContact>& contact);

    std::size_t size() const { return mFields.size(); }
    /// Fills the structure; its texts are this object's. Says whether it could.
    bool fill(std::size_t index, qv_field* field) const;

  private:
    struct Field {
        std::int32_t kind;
        std::optional<std::string> label;
        std::string text;
    };
    void add(std::int32_t kind, const std::optional<std::string>& text);
    void addEntries(std::int32_t kind, const QVContactFieldArray& ordered, const QVContactFieldSet& set);
    void addHandles(std::int32_t kind, const QVStringArray& ordered, const QVHandleSet& set);

    std::vector<Field> mFields;
};

}  // namespace qvc
