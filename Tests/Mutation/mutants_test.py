"""What can be changed in a file, and what cannot."""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from mutants import entity_of, line_of, mutants_of  # noqa: E402

SAMPLE = """\
#include "QVPlatform/Log.h"
#define BASE_URL "http://host/"

static_assert(1 == 1, "same");

namespace {

constexpr std::size_t kMost = 6;

// if (a == b) return 7;
template <typename Value>
bool isSmall(const Value& value) {
    return value < kMost && !value.empty();
}

}  // namespace

void Walker::walk(std::vector<int>& places) {
    const auto visit = [&](int place) {
        mSum += place;
        return place ? 'a' : 'b';
    };
    places.reserve(12);
    for (std::size_t index = 0; index < places.size(); ++index) {
        if (places[index] > 10) continue;
        visit(places[index]);
    }
    if (const auto end = find(places)) qv::Log::write("the end: %@", *end);
    std::string text = "x";
}
"""


def changes(code):
    return {(mutant.kind, code[mutant.start:mutant.end], mutant.after) for mutant in mutants_of(code)}


class Mutants(unittest.TestCase):
    def setUp(self):
        self.changes = changes(SAMPLE)

    def test_all_that_the_sample_holds(self):
        self.assertEqual(self.changes, {
            ("constant", '"http://host/"', '"~http://host/"'),
            ("constant", "6", "7"),
            ("statement", "return value < kMost && !value.empty();", "return {};"),
            ("operator", "<", "<="),
            ("operator", "&&", "||"),
            ("operator", "!", ""),
            ("statement", "mSum += place;", ";"),
            ("operator", "+=", "-="),
            ("statement", "return place ? 'a' : 'b';", "return {};"),
            ("condition", "place", "true"),
            ("condition", "place", "false"),
            ("constant", "'a'", "'x'"),
            ("constant", "'b'", "'x'"),
            ("constant", "0", "1"),
            ("condition", "index < places.size()", "false"),
            ("operator", "++", "--"),
            ("condition", "places[index] > 10", "true"),
            ("condition", "places[index] > 10", "false"),
            ("operator", ">", ">="),
            ("constant", "10", "11"),
            ("statement", "continue;", ";"),
            ("statement", "visit(places[index]);", ";"),
            ("condition", ")", "; true)"),
            ("condition", ")", "; false)"),
            ("statement", 'qv::Log::write("the end: %@", *end);', ";"),
            ("constant", '"the end: %@"', '"~the end: %@"'),
            ("constant", '"x"', '"~x"'),
        })

    def test_what_does_not_run_is_left_alone(self):
        for code in ('#include "a.h"', "// 1 == 2", "/* 1 */", 'static_assert(1 < 2, "text");', "virtual void f() = 0;",
                     'extern "C" {}', "[[deprecated(\"no\")]] void f();", "std::vector<std::map<A, B>> field;",
                     "bool operator==(const A& other);", "T&& pass(T&& value);", "text.reserve(4);"):
            with self.subTest(code):
                self.assertEqual(changes(code), set())

    def test_numbers(self):
        for before, after in (("0", "1"), ("1", "0"), ("41", "42"), ("0x1F", "0x20"), ("31U", "32U"), ("0.5", "1.5"),
                              ("1e9", "1000000001.0"), ("1'000", "1001"), ("010", "9")):
            with self.subTest(before):
                self.assertEqual(changes(f"int value = {before};"), {("constant", before, after)})

    def test_texts_keep_their_kind(self):
        for before, after in (('""', '"~"'), ('u"a"', 'u"~a"'), (r'"a\"b"', r'"~a\"b"'),
                              ('R"x(a")x"', 'R"x(~a")x"')):
            with self.subTest(before):
                self.assertEqual(changes(f"auto value = {before};"), {("constant", before, after)})

    def test_a_return_of_what_is_empty_stays(self):
        for value in ("{}", "nullptr", "std::nullopt", '""', "false", "0"):
            with self.subTest(value):
                self.assertNotIn("statement", {kind for kind, _, _ in changes("void f() { return " + value + "; }")})

    def test_declarations_stay(self):
        for code in ("auto a = f();", "const int a = f();", "std::string a(f());", "std::vector<int> a;", "T& a = f();",
                     "using A = B;", "T a{f()};"):
            with self.subTest(code):
                self.assertNotIn("statement", {kind for kind, _, _ in changes("void f() { " + code + " }")})

    def test_a_statement_behind_braces_within_another(self):
        code = "void f() { if (a) { g(); } else h(); run([] { i(); }, T{1}); j(); }"
        statements = {before for kind, before, _ in changes(code) if kind == "statement"}
        self.assertEqual(statements, {"g();", "h();", "i();", "run([] { i(); }, T{1});", "j();"})

    def test_the_whole_condition_before_a_question_mark(self):
        code = "int f() { return g(a, b) == 2 && c ? d : e; }"
        self.assertIn(("condition", "g(a, b) == 2 && c", "true"), changes(code))

    def test_a_mutant_changes_one_place(self):
        for mutant in mutants_of(SAMPLE):
            changed = mutant.apply(SAMPLE)
            self.assertEqual(changed, SAMPLE[:mutant.start] + mutant.after + SAMPLE[mutant.end:])
            self.assertNotEqual(changed, SAMPLE)
        last = max(mutant.start for mutant in mutants_of(SAMPLE))
        self.assertEqual(line_of(SAMPLE, last), SAMPLE[:SAMPLE.index('"x"')].count("\n") + 1)

    def test_whose_code_a_place_in_a_header_is(self):
        header = """\
#define BASE "http://host/"
#define OTHER "http://other/"
inline constexpr int kFirst = 1;  // the first
inline constexpr std::string_view kLong =
    "a"
    "b" BASE "c";
inline constexpr int kUsed = 2;
enum Kind {
    KindA = 11,  ///< one; two
    KindB = 12,
};
class A {
  public:
    /// What it says.
    int text() const { return mText; }
    void setText(int text) { mText = text; }
    int both() const { return text() + kUsed; }
    virtual bool has() const { return true; }
  private:
    int mText = 3;
};
"""
        for place, expected in (('"http://o', "OTHER"), ('"http://h', None), ("1;", "kFirst"), ('"b"', "kLong"), ("2;", None),
                                ("11", "KindA"), ("12", "KindB"), ("return mText", None), ("mText = text", "setText("),
                                ("+ k", "both("), ("true", None), ("3;", None)):
            with self.subTest(place):
                self.assertEqual(entity_of(header, header.index(place)), expected)
        self.assertEqual(entity_of(header.replace("text() +", "+"), header.index("return mText")), "text(")


if __name__ == "__main__":
    unittest.main()
