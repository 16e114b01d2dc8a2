#include "Fields/Words/WordSet.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

namespace qv::recognition::words {
namespace {

bool hasStreetEnding(std::string_view word) {
    static constexpr std::string_view endings[] = {
        "strasse", "straat", "gasse", "allee", "platz",     "damm",     "ufer", "weg",   "gracht", "plein",
        "laan",    "gatan",  "vagen", "veien", "vej",       "gade",     "katu", "kade",  "singel", "allen",
        "torget",  "stigen", "vag",   "gata",  "promenade", "chaussee", "str",  "markt", "dijk"};
    for (const auto ending : endings) {
        if (word.size() >= ending.size() + 3 && endsWith(word, ending)) return true;
    }
    return false;
}

}  // namespace

bool isStreet(std::string_view word) {
    static const WordSet set(
        "street st str road rd avenue ave av boulevard blvd lane ln drive dr court ct place pl square sq terrace ter "
        "parkway pkwy "
        "highway hwy circle cir crescent cres close way row walk mews quay wharf alley plaza trail grove gardens "
        "turnpike pike "
        "strasse gasse weg platz allee ring damm ufer markt chaussee rue quai chemin impasse allee cours route "
        "faubourg passage "
        "calle c/ avda avenida paseo plaza carrer carretera ctra camino ronda gran via viale piazza corso largo vicolo "
        "strada "
        "piazzale rua travessa praca estrada alameda rodovia straat laan plein gracht kade weg singel ul ulica aleja "
        "al aleje "
        "pl plac os osiedle ulice namesti nam trida nabrezi cadde caddesi cad sokak sokagi sk bulvari blv mah "
        "mahallesi gata gatan vagen "
        "veien gate vei vej gade katu tie utca ut ter rakpart bulevardul strada ulitsa prospekt dori chome ku shi "
        "machi");
    return set.has(word) || hasStreetEnding(word);
}

bool isAddress(std::string_view word) {
    static const WordSet set(
        "floor fl suite ste unit room rm apt apartment building bldg block box po p.o pobox gpo level house tower park "
        "postfach "
        "postbus etage stock og bp b.p cedex cs piso planta oficina local apartado piano scala interno casella caixa "
        "andar sala "
        "conjunto postal zip verdieping lokal skr skrytka patro kat daire no nr bina plaza estate business industrial "
        "campus "
        "centre center north south east west nw ne sw se n s industriepark gewerbepark gewerbegebiet technopark zac zi "
        "zone poligono parque zona hall "
        "address adresse direccion indirizzo endereco adres anschrift city town village township county district "
        "province state country");
    return set.has(word);
}

bool isCountry(std::string_view word) {
    static const WordSet set(
        "usa u.s.a us america canada mexico brazil brasil argentina chile colombia peru uruguay uk u.k england "
        "scotland wales "
        "britain kingdom ireland germany deutschland france espana spain italy italia portugal netherlands nederland "
        "holland "
        "belgium belgique belgie luxembourg luxemburg switzerland schweiz suisse svizzera austria osterreich poland "
        "polska "
        "czechia ceska slovakia slovensko hungary magyarorszag slovenia croatia hrvatska serbia bosnia romania "
        "bulgaria greece "
        "hellas turkey turkiye cyprus malta sweden sverige norway norge denmark danmark finland suomi iceland estonia "
        "latvia "
        "lithuania russia ukraine belarus georgia armenia kazakhstan israel emirates uae u.a.e qatar kuwait oman "
        "bahrain jordan "
        "lebanon egypt morocco tunisia algeria nigeria kenya ghana tanzania uganda ethiopia india pakistan bangladesh "
        "nepal china "
        "hongkong taiwan japan nippon korea singapore malaysia thailand vietnam philippines indonesia australia "
        "zealand "
        "liechtenstein monaco andorra");
    return set.has(word);
}

bool isState(std::string_view word) {
    static const WordSet set(
        "al ak az ar ca co ct de fl ga hi id il in ia ks ky la me md ma mi mn ms mo mt ne nv nh nj nm ny nc nd oh ok "
        "or pa ri sc sd "
        "tn tx ut vt va wa wv wi wy dc alabama alaska arizona arkansas california colorado connecticut delaware "
        "florida hawaii "
        "idaho illinois indiana iowa kansas kentucky louisiana maine maryland massachusetts michigan minnesota "
        "mississippi "
        "missouri montana nebraska nevada hampshire jersey york carolina dakota ohio oklahoma oregon pennsylvania "
        "rhode "
        "tennessee texas utah vermont virginia washington wisconsin wyoming ontario quebec alberta manitoba "
        "saskatchewan "
        "newfoundland on qc bc ab mb sk nb ns pe nl nsw vic qld sa wa tas act nt queensland victoria tasmania wales "
        "maharashtra karnataka tamilnadu gujarat rajasthan kerala punjab haryana telangana st sp rj mg rs pr df");
    return set.has(word);
}

}  // namespace qv::recognition::words
