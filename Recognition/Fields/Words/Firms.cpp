#include "Fields/Words/WordSet.h"
#include "Fields/Words/Words.h"

namespace qv::recognition::words {

bool isLegalForm(std::string_view word) {
    static const WordSet set(
        "gmbh mbh ag kg kgaa ohg gbr ug e.k ek e.v ev eg se partg partgmbb ggmbh stiftung gesmbh "
        "inc inc. incorporated llc l.l.c llp lp corp corporation ltd limited plc co company pllc p.c pc pty pte "
        "sa s.a sarl s.a.r.l sas s.a.s sasu eurl snc scp sci scop "
        "sl s.l slu s.l.u s.a.u sau s.c scoop srl s.r.l spa s.p.a sapa s.n.c sas srls lda ltda eireli s.a.b "
        "o.o z.o.o bv b.v nv n.v vof v.o.f cv c.v bvba sprl "
        "sp.zo.o sp.z.o.o z.o.o spolka zoo sp.j s.c s.r.o sro a.s as spol v.o.s k.s "
        "a.s ltd.sti sti san tic anonim sirketi oy oyj ab hb kb asa aps a/s i/s hf ehf kk k.k kft zrt nyrt doo d.o.o "
        "dd d.d "
        "ood eood sia uab ou jsc "
        "pjsc ooo gk genossenschaft");
    return set.has(word);
}

bool isCompany(std::string_view word) {
    static const WordSet set(
        "group holding holdings bank banking insurance insurances consulting consultants consultancy partners "
        "associates services "
        "solutions technologies technology tech systems system software industries industry industrial enterprises "
        "enterprise "
        "international university college institute academy hospital clinic foundation association society council "
        "museum library "
        "studio studios gallery agency agencies media press publishing publishers productions pictures records "
        "entertainment "
        "realty estate estates properties property homes builders construction contracting engineering motors "
        "automotive autos "
        "logistics transport shipping airlines airways travel tours hotel hotels resort restaurant cafe bakery "
        "catering brewery "
        "winery pharmacy pharma medical dental health healthcare wellness fitness spa salon beauty fashion boutique "
        "jewelry "
        "jewellery energy power electric electronics telecom communications networks network digital interactive labs "
        "laboratories ventures capital investments investment finance financial fund trust advisors advisory law legal "
        "attorneys llp design designs creative architects architecture interiors landscaping printing print graphics "
        "supply supplies trading traders import export imports market markets store stores shop foods food farms farm "
        "manufacturing works machinery tools steel metals chemicals plastics paper packaging security cleaning "
        "plumbing "
        "roofing painting repair rentals leasing photography events club church ministry school schools center centre "
        "company "
        "werke werk bau maschinenbau technik gruppe verlag verein verband versicherung versicherungen sparkasse "
        "volksbank "
        "universitat hochschule klinik klinikum krankenhaus praxis apotheke kanzlei buro ingenieurburo architekturburo "
        "steuerberatung unternehmensberatung autohaus backerei brauerei weingut gasthof druckerei tischlerei "
        "schreinerei "
        "gartenbau spedition immobilien elektrotechnik ministerium stadtwerke landesamt bundesamt akademie museum "
        "handel "
        "societe groupe cabinet banque assurance assurances universite hopital clinique agence atelier ateliers "
        "edition editions "
        "boulangerie fondation etude conseil conseils laboratoires industrie industries immobilier immobiliere "
        "imprimerie "
        "grupo empresa empresas banco seguros universidad universidade colegio instituto hospital clinica fundacion "
        "agencia "
        "estudio editorial construcciones servicios soluciones sistemas inmobiliaria bodega bodegas consultores "
        "asociados "
        "gruppo banca assicurazioni universita istituto ospedale clinica fondazione agenzia studio editrice "
        "costruzioni servizi "
        "soluzioni sistemi immobiliare azienda societa consorzio officina officine farmacia cantina cantine "
        "groep bedrijf verzekeringen universiteit ziekenhuis stichting bouw adviesbureau makelaardij drukkerij "
        "grupa firma uniwersytet politechnika szpital fundacja wydawnictwo kancelaria biuro przedsiebiorstwo zaklady "
        "uslugi "
        "skupina spolecnost univerzita nemocnice nadace nakladatelstvi banka pojistovna sirket universitesi hastanesi "
        "vakfi sanayi ticaret insaat muhendislik danismanlik universitet sykehus forlag gruppen konsult brothers bros "
        "sons & realliving "
        "meubelen bloemen logistiek transporten verzekering vastgoed schilders installatie installaties aannemers "
        "livs bygg snickeri mobler maleri verkstad fastigheter redovisning fabriken "
        "mobilya tekstil gida otomotiv elektronik lojistik turizm yapi mimarlik yayinlari matbaa kuyumculuk "
        "stolarnia piekarnia cukiernia ceramika drukarnia hurtownia apteka restauracja zaklad kwiaciarnia ksiegarnia "
        "pekarna truhlarstvi stavby tiskarna pivovar lekarna knihkupectvi restaurace sklarna keramika "
        "oficina livraria padaria construcoes consultoria imobiliaria adega adegas vinhos tecnologia solucoes "
        "verrerie menuiserie patisserie librairie optique vignobles domaine maison transports brasserie "
        "torrefazione pasticceria tipografia libreria ottica vetreria falegnameria ristorante "
        "libreria panaderia carpinteria optica imprenta talleres vinedos joyeria floristeria tecnologias "
        "mobelhaus buchhandlung konditorei metzgerei optik schlosserei tischlermeister malerbetrieb reisen touristik "
        "optical instruments bakers brewers roasters ceramics textiles furniture florist bookshop books "
        "innovations analytics robotics biotech pharmaceuticals semiconductor aerospace marine optics dynamics");
    return set.has(word);
}

bool isKin(std::string_view word) {
    static const WordSet set(
        "sons son daughters brothers bros co cie compagnie company partners partner associates "
        "sohne sohn tochter tochtern gebruder partnerinnen fils fille filles freres associes "
        "hijos hijo hijas hermanos hnos asociados figli figlio figlie fratelli soci filhos filho irmaos socios "
        "zonen zoon dochters gebroeders partneriai soner son dotter synowie syn synove syn bracia bratri ogullari "
        "oglu kardesler ortaklari sonner vennoten vennoter kompani komp");
    return set.has(word);
}

bool isConjunction(std::string_view word) {
    static const WordSet set("& + and und et y e en och i a ve og");
    return set.has(word);
}

bool isTopLevelDomain(std::string_view word) {
    static const WordSet set(
        "com net org edu gov mil int info biz name pro coop museum aero mobi jobs travel tel io ai app dev me tv cc co "
        "shop online "
        "store site tech cloud agency design studio consulting solutions company group global digital media photo "
        "photography "
        "email art blog club world life live space website web xyz example test berlin hamburg koeln koln bayern wien "
        "paris london "
        "amsterdam nyc tokyo cat eus gal bzh eu uk us ca au nz ie de at ch li lu fr be nl it es pt pl cz sk hu si hr "
        "ba rs me mk al "
        "bg ro gr tr cy mt se no dk fi is ee lv lt ru ua by md ge am az kz uz il ae sa qa kw om bh jo lb eg ma tn dz "
        "za ng ke gh tz "
        "ug in pk bd lk np cn hk tw jp kr sg my th vn ph id br ar cl pe uy py bo ec ve mx cr pa gt do cu pr va mc ad "
        "sm law legal "
        "health clinic dental care bank finance insure estate house homes realty engineering build construction events "
        "wine bio eco "
        "energy green farm garden restaurant cafe bar pizza coffee hotel tours holiday yoga fitness academy school "
        "university "
        "education training coach works systems technology software hosting network services support systems training "
        "ventures capital partners associates limited gmbh inc ltd llc");
    return set.has(word);
}

}  // namespace qv::recognition::words
