"""Invents people. Names and companies are made up, host names are those reserved for examples (RFC 2606), and every
telephone number comes from a range that its country keeps for fiction: 555-0100 to 0199 in North America, Ofcom's
drama numbers, the Bundesnetzagentur's and ARCEP's numbers for films, PTS's in Sweden. Countries without such a range
are left out."""

import unicodedata

from .card import Person

# language: given names, family names, titles, departments, legal forms, company words, taglines
WORDS = {
    "en": (
        ("Clara", "Edmund", "Imogen", "Rufus", "Maeve", "Hamish", "Noor", "Tobias", "Wren", "Callum", "Jean-Paul",
         "Odette", "Silas", "Beatrix", "Anne-Marie", "Leopold"),
        ("Whitcombe", "Hallworth", "Castellane", "Tolliver", "O'Dellary", "Pemberwick", "Marchbank", "Ashdown-Reyes",
         "Quillfeather", "Brackenridge", "Stavely", "Fennimore", "Ruskington", "McAldane", "Thornquist", "Varley"),
        ("Marketing Manager", "Head of Engineering", "Creative Director", "Senior Consultant",
         "Chief Executive Officer", "Sales Director", "Software Engineer", "Office Manager", "Managing Partner",
         "Product Designer", "Financial Analyst", "Vice President, Operations"),
        ("Customer Relations", "Research & Development", "Department of Logistics", "Human Resources",
         "International Sales", "Public Affairs"),
        ("Ltd", "Inc.", "LLC", "& Co.", "Group", "Partners"),
        ("Larkspur Trading", "Tarn & Vale Instruments", "Blue Heron Studio", "Copperfield Analytics",
         "Saltmarsh Energy", "Juniper Lane Books", "Northgate Ceramics", "Fairwater Consulting", "Bramble Row Foods",
         "Hollowell Robotics", "Kestrel Point Software", "Meridian Oak Furniture"),
        ("Made to last", "Ideas that travel", "Since 1974", "Clear water, clear answers")),
    "de": (
        ("Jürgen", "Käthe", "Björn", "Annegret", "Götz", "Friederike", "Matthias", "Jördis", "Lukas", "Sünje",
         "Heinrich", "Ute"),
        ("Größmann", "Lüdersen", "Müllenbach", "Schönhagen", "von Wiesental", "Brößkamp", "Hägerich", "Zöllikofen",
         "Tiefenbrück", "Kühlmorgen", "Achterfeld", "Weißdorn"),
        ("Geschäftsführer", "Vertriebsleiter", "Leiterin Einkauf", "Projektingenieur", "Rechtsanwältin",
         "Steuerberater", "Architektin", "Prokurist", "Fachärztin für Chirurgie"),
        ("Abteilung Vertrieb", "Forschung und Entwicklung", "Öffentlichkeitsarbeit", "Personalabteilung"),
        ("GmbH", "AG", "e.K.", "GmbH & Co. KG", "OHG"),
        ("Möbelhaus Lüders & Söhne", "Grünwerk Gartenbau", "Nordlicht Verlag", "Brückner Prüftechnik",
         "Kräuterhof Sömmer", "Feinmechanik Übelhör", "Alsterblick Immobilien", "Schäfer Wägetechnik"),
        ("Qualität seit 1921", "Gut gedacht, gut gebaut", "Näher am Kunden")),
    "fr": (
        ("Éloïse", "Jean-Baptiste", "Maëlle", "Thibault", "Océane", "Gérard", "Solène", "François", "Amélie", "Rémi"),
        ("Valmontagne", "Delacrosière", "Brévannois", "Lefaucheur", "Montbrisac", "d'Aurignel", "Castelnau-Roy",
         "Péricourt", "Fontanelle", "Guéridon"),
        ("Directrice commerciale", "Ingénieur d'études", "Chef de projet", "Responsable marketing", "Avocat associé",
         "Gérante", "Directeur général"),
        ("Service clientèle", "Recherche et développement", "Ressources humaines", "Service export"),
        ("SARL", "SAS", "SA", "& Fils"),
        ("Atelier du Canal", "Verrerie Montbrisac", "Éditions Sérapis", "Maison Péricourt", "Optique Valrose",
         "Boulangerie Trois Épis"),
        ("Le goût du détail", "L'art de bâtir")),
    "es": (
        ("Begoña", "Íñigo", "Maite", "Álvaro", "Lucía", "Joaquín", "Inés", "Ramón", "Ángela", "Nicolás"),
        ("Valdeolivas", "Peñarrocha", "Montesclaros", "Ibáñez-Luna", "Carrascosa", "Muñozal", "Torrealta",
         "Quintanilla", "Saldaña", "Ribagorda"),
        ("Directora de Ventas", "Ingeniero Industrial", "Gerente General", "Abogada", "Jefe de Proyecto",
         "Contador Público"),
        ("Atención al Cliente", "Recursos Humanos", "Departamento de Compras"),
        ("LLC", "Inc.", "& Hijos"),
        ("Cerámicas Peñalba", "Café Montesclaros", "Talleres Ibáñez", "Editorial Dos Ríos", "Viñedos Saldaña",
         "Azulejos Ribera"),
        ("Hecho a mano", "Calidad y confianza")),
    "sv": (
        ("Åsa", "Göran", "Märta", "Björn", "Elsa", "Håkan", "Sölve", "Linnéa", "Örjan", "Ingegärd"),
        ("Näslundh", "Åkerhielm-Berg", "Söderqvarn", "Bäckahage", "Lingonstad", "Höglycke", "Sjöhagen", "Almedalh",
         "Ekensund", "Rönnskär"),
        ("Försäljningschef", "Verkställande direktör", "Projektledare", "Arkitekt", "Ekonomichef", "Utvecklare"),
        ("Kundtjänst", "Forskning och utveckling", "Personalavdelningen"),
        ("AB", "HB", "& Söner AB"),
        ("Fjällröding Livs", "Sjöhagens Trä", "Norrsken Data", "Gröna Ängen", "Björklöv Bygg"),
        ("Nära dig", "Byggt för livet")),
}

# (language, number style, mobile style, city lines): a number style's # stand for digits by chance.
PLACES = (
    ("en", "312-555-01##", "773-555-01##", ("Chicago, IL 60607",)),
    ("en", "206-555-01##", "425-555-01##", ("Seattle, WA 98109",)),
    ("en", "617-555-01##", "857-555-01##", ("Boston, MA 02118",)),
    ("en", "512-555-01##", "737-555-01##", ("Austin, TX 78704",)),
    ("es", "305-555-01##", "786-555-01##", ("Miami, FL 33135",)),
    ("es", "210-555-01##", "726-555-01##", ("San Antonio, TX 78207",)),
    ("en", "020 7946 0###", "07700 900###", ("London SE1 9ZZ", "London N7 8ZZ")),
    ("en", "0161 496 0###", "07700 900###", ("Manchester M4 5ZZ",)),
    ("en", "0113 496 0###", "07700 900###", ("Leeds LS2 7ZZ",)),
    ("en", "0131 496 0###", "07700 900###", ("Edinburgh EH3 9ZZ",)),
    ("de", "030 23125###", "0171 39200##", ("10969 Berlin",)),
    ("de", "069 90009###", "0176 040690##", ("60316 Frankfurt am Main",)),
    ("de", "040 66969###", "0171 39200##", ("20457 Hamburg",)),
    ("de", "0221 4710###", "0176 040690##", ("50667 Köln",)),
    ("de", "089 99998###", "0171 39200##", ("80469 München",)),
    ("fr", "01 99 00 ## ##", "06 39 98 ## ##", ("75011 Paris",)),
    ("fr", "04 65 71 ## ##", "06 39 98 ## ##", ("69007 Lyon",)),
    ("fr", "02 61 91 ## ##", "06 39 98 ## ##", ("44000 Nantes",)),
    ("sv", "08-465 004 ##", "070-174 06 ##", ("118 60 Stockholm",)),
    ("sv", "031-390 06 ##", "070-174 06 ##", ("413 01 Göteborg",)),
)

STREETS = {
    "en": ("{n} Larkspur Terrace", "{n} Old Foundry Road", "{n} Heron Quay, Suite {s}", "{n} Cooper's Lane",
           "Unit {s}, {n} Tannery Street", "{n} West Juniper Avenue"),
    "de": ("Mühlengasse {n}", "Schönblickstraße {n}", "Am Kräuterhang {n}", "Alte Gießerei {n}", "Lärchenweg {n}"),
    "fr": ("{n}, rue des Tonneliers", "{n} bis, quai de la Verrerie", "{n}, allée du Moulin", "{n}, place Sérapis"),
    "es": ("{n} Calle Azulejo", "{n} Avenida del Molino, Suite {s}", "{n} Palmetto Row"),
    "sv": ("Kvarngatan {n}", "Ängsvägen {n}", "Björkallén {n}"),
}

CODES = {"de": "49", "fr": "33", "sv": "46", "en": "44"}


def invent(rng):
    """A person by chance."""
    lang, number, mobile, cities = rng.choice(PLACES)
    given, family, titles, departments, forms, companies, taglines = WORDS[lang]
    first, last, firm = rng.choice(given), rng.choice(family), rng.choice(companies)
    company = firm + " " + rng.choice(forms) if rng.random() < 0.8 else firm
    host = slug(firm.split(" & ")[0], "") + rng.choice((".example", ".example.com", ".example.org", ".example.net"))
    person = Person(lang, _with_degree(rng, lang, first + " " + last), rng.choice(titles), company)
    person.email = _local_part(rng, first, last) + "@" + host
    person.url = rng.choice(("www.", "www.", "")) + host if rng.random() < 0.75 else None
    person.department = rng.choice(departments) if rng.random() < 0.25 else None
    person.tagline = rng.choice(taglines) if rng.random() < 0.2 else None
    person.address = _address(rng, lang, cities) if rng.random() < 0.85 else []
    person.phones = _phones(rng, lang, number, mobile)
    person.twitter = "@" + slug(first + last, "")[:15] if rng.random() < 0.12 else None
    person.skype = slug(first, "") + "." + slug(last, "") if rng.random() < 0.1 else None
    return person


def slug(text, joint):
    """Lower-case ASCII letters and digits; umlauts as two letters, other accents dropped, `joint` between words."""
    for letter, plain in (("ä", "ae"), ("ö", "oe"), ("ü", "ue"), ("ß", "ss"), ("å", "a")):
        text = text.lower().replace(letter, plain)
    plain = unicodedata.normalize("NFKD", text).encode("ascii", "ignore").decode()
    return joint.join("".join(c if c.isalnum() else " " for c in plain.replace("'", "")).split())


def _with_degree(rng, lang, name):
    if rng.random() > 0.12:
        return name
    return {"de": "Dr. " + name, "fr": name, "es": name, "sv": name}.get(lang, rng.choice(("Dr. " + name,
                                                                                       name + ", PhD")))


def _local_part(rng, first, last):
    first, last = slug(first, "-"), slug(last, "-")
    return rng.choice((first + "." + last, first[0] + "." + last, first, first[0] + slug(last, ""), "info", "office"))


def _address(rng, lang, cities):
    street = rng.choice(STREETS[lang]).format(n=rng.randint(2, 480 if lang in ("en", "es") else 96),
                                              s=rng.randint(1, 40) * 10)
    city = rng.choice(cities)
    return [street + ", " + city] if rng.random() < 0.2 else [street, city]


def _phones(rng, lang, number, mobile):
    phones = [("phone", _digits(rng, number))]
    if rng.random() < 0.6:
        phones.append(("mobile", _digits(rng, mobile)))
    if rng.random() < 0.35:
        phones.append(("fax", _digits(rng, number)))
    shape = rng.choice(("national", "national", "international", "bracketed"))
    dotted = rng.random() < 0.3
    return [(kind, _shaped(lang, value, shape, dotted)) for kind, value in phones]


def _digits(rng, pattern):
    return "".join(str(rng.randint(0, 9)) if c == "#" else c for c in pattern)


def _shaped(lang, number, shape, dotted):
    """The number in one of the shapes that cards print."""
    if not number.startswith("0"):
        area, rest = number.split("-", 1)
        shapes = {"national": number.replace("-", "." if dotted else "-"), "international": "+1 " +
                  number.replace("-", " "), "bracketed": "(%s) %s" % (area, rest)}
        return shapes[shape]
    area, rest = number.replace("-", " ").split(" ", 1)
    if shape == "international":
        return "+%s %s %s" % (CODES[lang], area[1:], rest)
    if shape == "bracketed" and lang in ("de", "en"):
        return "+%s (0)%s %s" % (CODES[lang], area[1:], rest)
    return "%s/%s" % (area, rest) if lang == "de" and dotted else number
