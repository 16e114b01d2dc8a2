#include "Fields/PhoneLabel.h"

#include "Fields/Words/WordSet.h"
#include "Text/Letters.h"

#include <algorithm>
#include <string>

namespace qv::recognition {
namespace {

const WordSet& phoneWords() {
    static const WordSet set(
        "tel telephone phone ph phn office offices direct directline dir ddi did main mainline work business bus "
        "switchboard reception toll "
        "tollfree hotline store shop home service parts sales support desk local call callus telno phoneno phonenumber "
        "telefon "
        "fon fernruf ruf rufnummer durchwahl dw zentrale buro telefono tlf tlfn tfno fijo oficina centralita telefone "
        "ufficio "
        "centralino telefoon vast kantoor tele telefax/tel teltel stacjonarny praca pevna linka is ofis santral sabit "
        "tlfnr "
        "vaxel kontor telfax faxtel telfaks landline studio voice line numero fixe standard bureau lignedirecte direkt "
        "residence res tollfree ext contact");
    return set;
}

const WordSet& mobileWords() {
    static const WordSet set(
        "mobile mobil mob mobiltelefon mobilfunk mobilnummer cell cellphone cellular cel handy natel funk portable gsm "
        "movil mov "
        "cellulare celular telemovel tlm mobiel kom komorka komorkowy mobilni mobilny cep ceptel mobilephone mobileno "
        "whatsapp text sms "
        "mobilo matkapuhelin kannykka wireless iphone");
    return set;
}

const WordSet& faxWords() {
    static const WordSet set(
        "fax telefax facsimile telecopie telecopieur faks faksi fx faxno faxnr tfax dfax efax fex belgegecer telecopy");
    return set;
}

/// Numbers that say who somebody is to an office or a bank.
const WordSet& registerWords() {
    static const WordSet set(
        "vat vatno vatid vatnumber ust ustid ustidnr ustidnummer steuernr steuernummer stnr uid uidnr idnr hrb hra "
        "handelsregister registergericht fn iban bic swift konto kontonr ktonr blz account accountno sortcode siret "
        "siren "
        "rcs naf ape tva cif nif dni nie piva partitaiva codfisc codicefiscale cf rea cnpj cpf crm oab kvk btw btwnr "
        "nip "
        "regon krs ico dic vkn vergino mersis abn acn tfn gst gstin gstno pan cin ein tin license licence lic licno "
        "dre "
        "bre calbre nmls npi regno registration orgnr");
    return set;
}

const WordSet& otherWords() {
    static const WordSet set(
        "id reg since est established seit depuis fundada zip plz po pobox postfach bp box room rm suite ste unit apt "
        "floor no nr invoice member iso");
    return set;
}

std::optional<NumberKind> letterLabel(std::string_view key) {
    if (key.size() != 1) return std::nullopt;
    switch (key[0]) {
        case 't':
        case 'p':
        case 'o':
        case 'd':
        case 'h':
            return NumberKind::Phone;
        case 'm':
        case 'c':
            return NumberKind::Mobile;
        case 'f':
            return NumberKind::Fax;
        default:
            return std::nullopt;
    }
}

/// The engine parts words of these scripts where it likes.
std::optional<NumberKind> eastAsianLabel(std::string_view printed) {
    std::string label(printed);
    label.erase(std::remove(label.begin(), label.end(), ' '), label.end());
    const auto holds = [&label](std::string_view word) { return label.find(word) != std::string_view::npos; };
    if (holds("〒") || holds("邮编") || holds("郵便") || holds("우편")) return NumberKind::Other;
    if (holds("携帯") || holds("手机") || holds("手機") || holds("휴대") || holds("핸드폰")) return NumberKind::Mobile;
    if (holds("传真") || holds("傳真") || holds("ファックス") || holds("ファクス") || holds("팩스"))
        return NumberKind::Fax;
    if (holds("電話") || holds("电话") || holds("전화") || holds("直通")) return NumberKind::Phone;
    return std::nullopt;
}

}  // namespace

std::optional<NumberKind> numberLabel(std::string_view label, bool mayBeLetter) {
    if (label.find("¢") != std::string_view::npos && label.size() <= 4) return NumberKind::Mobile;  // a misread "c"
    const std::string key = foldedKey(label);
    if (faxWords().has(key)) return NumberKind::Fax;
    if (mobileWords().has(key)) return NumberKind::Mobile;
    if (phoneWords().has(key)) return NumberKind::Phone;
    if (registerWords().has(key) || otherWords().has(key)) return NumberKind::Other;
    if (mayBeLetter) {
        if (const auto kind = letterLabel(key)) return kind;
    }
    return eastAsianLabel(label);
}

bool isRegisterWord(std::string_view word) {
    return registerWords().has(foldedKey(word));
}

}  // namespace qv::recognition
