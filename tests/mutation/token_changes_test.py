import unittest

from token_changes import changes


def changed(statement):
    """The statement, a function's body, after each of its changes."""
    text = f"void F() {{\n{statement}\n}}\n"
    return [change.apply(text)[len("void F() {\n") : -len("\n}\n")] for change in changes(text)]


class TokenChangesTest(unittest.TestCase):
    def test_comparisons(self):
        self.assertEqual(changed("if (a < b) x = y;"), ["if (a <= b) x = y;"])
        self.assertEqual(changed("if (a >= b) x = y;"), ["if (a > b) x = y;"])
        self.assertEqual(changed("if (a == b) x = y;"), ["if (a != b) x = y;"])

    def test_logic(self):
        self.assertEqual(changed("x = a && b;"), ["x = a || b;"])
        self.assertEqual(changed("x = !a;"), ["x = a;"])
        self.assertEqual(changed("x = true;"), ["x = false;"])

    def test_arithmetic(self):
        self.assertEqual(changed("x = a + b;"), ["x = a - b;"])
        self.assertEqual(changed("x += a;"), ["x -= a;"])
        self.assertEqual(changed("x = a * b;"), ["x = a / b;"])
        self.assertEqual(changed("++x;"), ["--x;"])

    def test_constants(self):
        self.assertEqual(changed("x = 16u;"), ["x = 17u;"])
        self.assertEqual(changed("x = 0.5;"), [])
        self.assertEqual(changed("x = 'a';"), [])

    def test_calls_go(self):
        self.assertEqual(changed("f(a, {b});"), [";"])
        self.assertEqual(changed("x = y;\nthis->a_.f(b);"), ["x = y;\n;"])
        self.assertEqual(changed("Scope scope(a);"), [])
        self.assertEqual(changed("for (auto x : f(y)) g(x);"), [])

    def test_return_values(self):
        self.assertEqual(changed("return f(a);"), ["return {};"])
        self.assertEqual(changed("return 3;"), ["return 4;"])
        self.assertEqual(changed("return;"), [])
        self.assertEqual(changed("return nullptr;"), [])
        self.assertEqual(changed("return std::nullopt;"), [])

    def test_loops(self):
        self.assertEqual(changed("while (x) break;"), ["while (x) continue;"])
        self.assertEqual(changed("x = std::min(a, b);"), ["x = std::max(a, b);"])

    def test_signs_and_brackets_are_no_operators(self):
        self.assertEqual(changed("x = -a;"), [])
        self.assertEqual(changed("std::vector<int> x;"), [])
        self.assertEqual(changed("auto&& x = y;"), [])
        self.assertEqual(changed("x = a->b;"), [])

    def test_texts_are_not_added_up_otherwise(self):
        self.assertEqual(changed('x = "a" + b;'), [])

    def test_comments_texts_and_directives_stay(self):
        self.assertEqual(changed("// a < b\n/* 1 == 2 */"), [])
        self.assertEqual(changed('x = "1 < 2 && !true";'), [])
        self.assertEqual(changed('x = R"(1 < 2)";'), [])
        self.assertEqual(changes("#if A < 1\n#endif\nint x;\n"), [])

    def test_what_is_asserted_or_looks_stays(self):
        self.assertEqual(changed("static_assert(a < 1);"), [])
        self.assertEqual(changed("layout->setContentsMargins(0, 1, 0, 1);"), [])

    def test_positions(self):
        text = "int F() {\n  return 1;\n}\n"
        (change,) = changes(text)
        self.assertEqual((text[change.start : change.end], change.new), ("1", "2"))


if __name__ == "__main__":
    unittest.main()
