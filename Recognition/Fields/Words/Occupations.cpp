#include "Fields/Words/WordSet.h"
#include "Fields/Words/Words.h"
#include "Text/Letters.h"

namespace qv::recognition::words {

bool isTitle(std::string_view word) {
    static const WordSet set(
        "accountant actor administrator administrative adviser advisor agent analyst apprentice architect artist "
        "assistant associate "
        "attorney auditor author barista barber builder buyer carpenter cashier ceo cfo chairman chairwoman "
        "chairperson chair chef "
        "chemist chiropractor cio ciso clerk cmo coach commissioner comptroller conductor consultant contractor "
        "controller coo "
        "coordinator copywriter counsel counselor counsellor cpo cro cso cto curator dean dentist deputy dermatologist "
        "designer "
        "detective developer director dispatcher doctor driver economist editor educator electrician engineer "
        "entrepreneur "
        "estimator evangelist examiner executive expert facilitator filmmaker florist foreman founder cofounder "
        "co-founder "
        "freelancer fundraiser gardener geologist guide hairdresser head illustrator inspector instructor interpreter "
        "intern "
        "investigator investor jeweler journalist judge landscaper lawyer lead leader lecturer liaison librarian "
        "locksmith "
        "manager marketer mason mechanic mentor merchandiser midwife minister musician notary nurse nutritionist "
        "officer operator "
        "optician optometrist organizer owner painter paralegal partner pastor pediatrician pharmacist photographer "
        "physician "
        "physicist physiotherapist pilot planner plumber podiatrist postdoc president principal producer professor "
        "programmer "
        "promoter proprietor psychiatrist psychologist publisher radiologist realtor receptionist recruiter registrar "
        "representative rep reporter researcher salesman salesperson saleswoman scientist secretary shareholder singer "
        "sommelier specialist stylist superintendent supervisor surgeon surveyor teacher technician technologist "
        "therapist "
        "trader trainer translator treasurer trustee tutor underwriter veterinarian videographer vp svp evp avp waiter "
        "webmaster writer broker salesforce strategist ambassador caterer planner title buyer decorator "
        // German
        "abteilungsleiter abteilungsleiterin anwalt anwaltin architektin arzt arztin assistent assistentin "
        "aussendienst "
        "berater beraterin bereichsleiter bereichsleiterin betriebsleiter buchhalter buchhalterin bauleiter "
        "bauleiterin "
        "chefarzt diplom-ingenieur einkaufer einkauferin entwickler entwicklerin fachanwalt fachanwaltin fotograf "
        "fotografin "
        "gebietsleiter gebietsleiterin gesellschafter gesellschafterin geschaftsfuhrer geschaftsfuhrerin "
        "geschaftsfuhrender "
        "geschaftsfuhrung geschaftsleitung gestalterin gestalter heilpraktiker heilpraktikerin ingenieur ingenieurin "
        "inhaber inhaberin "
        "journalistin kaufmann kauffrau konditor konstrukteur kundenberater kundenberaterin leiter leiterin lehrer "
        "lehrerin "
        "meister mechaniker niederlassungsleiter notar notarin personalleiter personalleiterin projektleiter "
        "projektleiterin "
        "projektmanager projektmanagerin prokurist prokuristin rechtsanwalt rechtsanwaltin referent referentin "
        "redakteur "
        "redakteurin sachbearbeiter sachbearbeiterin sachverstandiger schreinermeister sekretar sekretarin "
        "steuerberater "
        "steuerberaterin techniker technikerin teamleiter teamleiterin tierarzt tierarztin ubersetzer ubersetzerin "
        "unternehmensberater "
        "verkaufer verkauferin verkaufsleiter verkaufsleiterin vertreter vertriebsleiter vertriebsleiterin "
        "vertriebsingenieur "
        "vorstand vorstandsvorsitzender vorsitzender vorsitzende werkleiter wirtschaftsprufer zahnarzt zahnarztin "
        "managerin "
        "direktor direktorin geschaftsstellenleiter vertriebsmitarbeiter softwareentwickler softwareentwicklerin "
        "prasident "
        "prasidentin beauftragte beauftragter mitarbeiter mitarbeiterin dozent dozentin goldschmiedin backermeister "
        // French
        "acheteur acheteuse administrateur agente architecte associe associee avocat avocate cadre charge chargee "
        "chercheur "
        "coiffeur coiffeuse commercial commerciale comptable conseiller conseillere consultante coordinateur "
        "coordinatrice "
        "cuisinier decorateur delegue dentiste developpeur developpeuse directeur directrice dirigeant dirigeante "
        "editeur enseignant "
        "enseignante fondateur fondatrice gerant gerante graphiste infirmier infirmiere ingenieure journaliste medecin "
        "notaire "
        "pdg photographe presidente professeur proprietaire redacteur redactrice responsable secretaire technicien "
        "technicienne "
        "traducteur traductrice vendeur vendeuse veterinaire stagiaire chef "
        // Spanish, Italian, Portuguese
        "abogado abogada administrador administradora arquitecto arquitecta asesor asesora asistente comercial "
        "consejero consejera "
        "consultor consultora contable coordinador coordinadora delegado desarrollador desarrolladora director "
        "directora "
        "disenador disenadora editor encargado encargada especialista fotografo fotografa fundador fundadora gerente "
        "ingeniero "
        "ingeniera jefe jefa medico medica presidente profesor profesora propietario propietaria responsable "
        "secretaria tecnico "
        "vendedor veterinario traductora traductor investigadora investigador enfermera enfermero administratore "
        "agente amministratore amministratrice architetto "
        "avvocato commercialista consulente coordinatore coordinatrice direttore direttrice dirigente fondatore "
        "fotografo geometra "
        "giornalista impiegato ingegnere insegnante notaio presidente professore professoressa progettista "
        "proprietario "
        "responsabile ricercatore segretaria socio tecnico titolare venditore advogado advogada arquiteto arquiteta "
        "assessor "
        "coordenador coordenadora diretor diretora engenheiro engenheira fundador gerente gestor gestora professor "
        "socia tecnica "
        // Dutch, Polish, Czech, Turkish, Nordic
        "adviseur bedrijfsleider bestuurder commercieel directeur eigenaar hoofd ingenieur leraar makelaar medewerker "
        "oprichter projectleider verkoper voorzitter accountmanager adwokat architekt asystent asystentka doradca "
        "dyrektor handlowiec inzynier kierownik "
        "konsultant ksiegowa ksiegowy lekarz menedzer notariusz prezes projektant radca specjalista wlasciciel "
        "wspolzalozyciel "
        "zalozyciel majitel jednatel reditel reditelka manazer manazerka obchodni zastupce vedouci ucetni advokat "
        "lekar mudr inzenyr "
        "genel mudur muduru mudurlugu yonetici uzmani uzman direktoru baskan baskani muhendis muhendisi avukat mimar "
        "kurucu ortak "
        "danisman satis temsilcisi sorumlusu salgschef direktor direktorer konsulent radgiver prosjektleder daglig "
        "leder saljare forsaljningschef "
        "verkstallande vd");
    return set.has(word);
}

bool isTitleQualifier(std::string_view word) {
    static const WordSet set(
        "senior junior chief executive managing general vice deputy assistant associate regional national global area "
        "district "
        "sales marketing account project product business customer technical software hardware graphic web creative "
        "art "
        "financial finance legal human resources operations operating information technology research development "
        "quality key "
        "international corporate communications communication social media data digital office branch store field "
        "design "
        "interim acting leitender leitende stellvertretender stellvertretende technischer technische kaufmannischer "
        "kaufmannische general generale generaux adjoint commercial technique ventes marketing ventas comercial "
        "tecnico "
        "vendite commerciale tecnica administration real estate leasing purchasing production security systems system "
        "network "
        "chef de of for und and et y e i & + in der des du la");
    return set.has(word);
}

bool isDepartment(std::string_view word) {
    static const WordSet set(
        "department dept division section unit faculty school office team bureau directorate laboratory lab chair "
        "center centre "
        "abteilung bereich fachbereich fakultat institut lehrstuhl referat dezernat geschaftsbereich sachgebiet "
        "stabsstelle "
        "vertriebsabteilung rechtsabteilung personalabteilung entwicklungsabteilung zentrale arbeitsgruppe "
        "departement direction service pole faculte ecole laboratoire "
        "departamento direccion seccion facultad escuela area servicio laboratorio "
        "dipartimento direzione reparto ufficio facolta settore scuola "
        "departamento direcao setor faculdade escola "
        "afdeling faculteit sectie dienst wydzial dzial katedra zaklad oddeleni fakulta ustav odbor bolum bolumu "
        "departmani "
        "fakultesi mudurlugu birimi avdeling avdelning afdeling institutt enhet sektionen avdelningen departement "
        "biuro "
        "usek stredisko");
    return set.has(word);
}

bool isArea(std::string_view word) {
    static const WordSet set(
        "human resources public affairs customer client relations service services support care sales marketing "
        "logistics procurement "
        "purchasing accounting accounts finance legal compliance research development engineering operations "
        "production quality "
        "assurance control it communications press media investor facility facilities management admissions training "
        "strategy "
        "vertrieb einkauf personal personalwesen buchhaltung entwicklung forschung produktion qualitatssicherung "
        "kundendienst "
        "kundenservice logistik recht finanzen verwaltung offentlichkeitsarbeit konstruktion marktforschung presse "
        "ressources humaines ventes achats comptabilite recherche developpement publiques clientele communication "
        "juridique recursos humanos ventas compras contabilidad atencion al cliente relaciones publicas exportacion "
        "comunicacion "
        "risorse umane vendite acquisti amministrazione contabilita ricerca sviluppo relazioni clienti inkoop verkoop "
        "personeelszaken boekhouding vendas compras financeiro sprzedaz zakupy ksiegowosc prodej nakup satis pazarlama "
        "insan kaynaklari muhasebe forsaljning inkop personalavdelningen ekonomi kundservice r&d hr pr "
        // Export, helpdesk, law and the like in the same languages
        "export import helpdesk compliance controlling treasury payroll recruitment merchandising ecommerce e-commerce "
        "versand lager aussenhandel kundenbetreuung auftragsabwicklung arbeitsvorbereitung disposition rechnungswesen "
        "qualitatsmanagement edv werbung ausbildung technik "
        "qualite logistique formation expedition apres-vente sav clients juridiques comptable "
        "logistica produccion calidad investigacion desarrollo administracion finanzas importacion formacion soporte "
        "clientes posventa nominas "
        "produzione qualita comunicazione assistenza estero formazione legale personale spedizioni magazzino "
        "apoio ao atendimento exportacao producao qualidade pesquisa desenvolvimento juridico financeira contabilidade "
        "comunicacao clientes pos-venda "
        "klantenservice klantendienst klantenzorg financien administratie productie onderzoek ontwikkeling personeel "
        "kwaliteit kwaliteitszorg communicatie logistiek zaken juridische "
        "kundtjanst kundsupport kundvard marknad marknadsforing utveckling produktion redovisning lon "
        "juridik inkopsavdelningen forsaljningsavdelningen "
        "obsluga obslugi klienta klientow eksport kadry produkcja produkcji logistyka logistyki jakosc jakosci rozwoj "
        "rozwoju badania finanse finansow sprzedazy zakupow marketingu ksiegowosci "
        "zakaznicky zakaznicka servis podpora zakazniku odbyt obchod vyroba vyroby kvalita kvality vyvoj vyvoje "
        "vyzkum ucetnictvi lidske zdroje lidskych zdroju doprava prodeje nakupu obchodu "
        "satin alma musteri hizmetleri hizmet ihracat ithalat uretim kalite arge ar-ge finans hukuk lojistik halkla "
        "iliskiler bilgi islem destek idari isler "
        "and und et y e i & of de des the for fur en och och a ve do da dos o pece");
    return set.has(word);
}

bool isAreaQualifier(std::string_view word) {
    static const WordSet set(
        "international national regional domestic global internal external technical inside inbound outbound corporate "
        "commercial central "
        "internationaler nationaler technischer technische zentraler zentrale internationale nationale "
        "technique commerciale centrale tecnica tecnico comercial internacional internazionale internationella "
        "internationell technisch technische centrale techniczny handlowy technicky obchodni teknik uluslararasi");
    return set.has(word);
}

bool isHonorific(std::string_view word) {
    static const WordSet set(
        "mr mrs ms miss mx dr prof professor sir dame rev hon capt herr frau dipl dipl.-ing dipl.-kfm dipl.-kffr ing "
        "mag m mme mlle maitre "
        "me sr sra srta don dona d dott dott.ssa dottor avv arch sig sig.ra dhr mevr drs ir mr.dr inz mgr mudr judr "
        "rndr phdr "
        "bc doc sayin dipl.-inf dipl.-des dipl.-wirt.-ing h.c dr.-ing prof.dr priv.-doz pd dra eng");
    return set.has(word);
}

bool isPostNominal(std::string_view word) {
    static const WordSet set(
        "phd ph.d md m.d mba msc m.sc bsc b.sc ba b.a ma m.a mph jd j.d llm ll.m llb esq cpa cfa cfp dds dvm rn pe p.e "
        "pmp jr sr ii iii iv "
        "obe mbe fca aca pmi cissp lpc lcsw aia leed crs gri abr hons meng beng mfa bfa csc emba dphil rph");
    return set.has(word);
}

bool isParticle(std::string_view word) {
    static const WordSet set(
        "von vom van der den de del della di da dos das do du la le el al bin ibn ben zu zur zum ter ten te af av y e "
        "und mac mc st");
    return set.has(word);
}

bool isFunction(std::string_view word) {
    static const WordSet set(
        "the and of for with to in on at by from your our we is are you it this that all an a be or as "
        "und der die das fur mit von aus zum zur ihr ihre wir ist sind "
        "et les des pour avec votre nos notre dans sur est y los las para con su nuestro en e il lo gli per con il tuo "
        "een het voor met van uw i z w na dla a pro ve ile icin");
    return set.has(word);
}

}  // namespace qv::recognition::words
