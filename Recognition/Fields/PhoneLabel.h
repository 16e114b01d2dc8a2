#pragma once

#include <optional>
#include <string_view>

namespace qv::recognition {

/// What a word before (above, after) a number says that the number is. `Other` is a number that is no telephone: a tax
/// number, a register entry, a bank account, a licence.
enum class NumberKind { Phone, Mobile, Fax, Other };

/// The meaning of a label, whatever its case, accents and punctuation: "Tel.:", "Mobil", "(fax)", "USt-IdNr.". Nothing
/// when it is not known as a label. A single letter is a label only where `mayBeLetter`.
std::optional<NumberKind> numberLabel(std::string_view label, bool mayBeLetter);

/// Whether a word announces a number of a register, a tax office or a bank ("USt-IdNr.", "IBAN").
bool isRegisterWord(std::string_view word);

}  // namespace qv::recognition
