#!/usr/bin/env python3
"""tools/check-translations on a tree of two sources: what passes, and each fault that it is there to find."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parent.parent.parent / "tools"
LUPDATE = sys.argv.pop() if len(sys.argv) > 1 else ""

HEADER = """#include <QObject>
class Page : public QObject {
    Q_OBJECT
    QString text();
};
"""
SOURCE = """#include "page.h"
const char* const KEY = QT_TRANSLATE_NOOP("Page", "EV_BATTERY_LOW");
QString Page::text()
{
    return tr("Time left: ") + tr("Point now?") + tr(" kB") + tr("%1 of %2 h");
}
"""
WORDS = {
    "EV_BATTERY_LOW": "Battery low\nConnect power supply",
    "Time left: ": "Time left: ",
    "Point now?": "Point now?",
    " kB": " kB",
    "%1 of %2 h": "%1 of %2 h",
}


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;")


class CheckTranslations(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name)
        (self.root / "src").mkdir()
        (self.root / "res/translations").mkdir(parents=True)
        (self.root / "src/page.h").write_text(HEADER)
        (self.root / "src/page.cpp").write_text(SOURCE)
        self.list("en")

    def list(self, *languages):
        (self.root / "res/translations/languages.txt").write_text("\n".join(languages) + "\n")

    def file(self, language="en"):
        return self.root / f"res/translations/i18n_{language}.ts"

    def write(self, words=None, language="en", state="", header=None):
        entries = "".join(f"<message><source>{escaped(source)}</source>"
                          f"<translation{state}>{escaped(text)}</translation></message>\n"
                          for source, text in (words or WORDS).items())
        self.file(language).write_text(
            f'<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n<TS version="2.1" '
            f'language="{header or language}">\n<context><name>Page</name>\n{entries}</context>\n</TS>\n',
            encoding="utf-8")

    def run_tool(self, *arguments):
        command = [sys.executable, str(TOOLS / "check-translations"), "--root", str(self.root), *arguments]
        if LUPDATE:
            command += ["--lupdate", LUPDATE]
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)

    def assert_passes(self, *arguments):
        result = self.run_tool(*arguments)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))

    def assert_fault(self, fault):
        result = self.run_tool()
        self.assertEqual(result.returncode, 1)
        self.assertIn(f"check-translations: {fault}\n", result.stderr)

    def assert_words_fault(self, source, words, fault, language="en"):
        self.list(language)
        self.write({**WORDS, source: words}, language)
        self.assert_fault(f'i18n_{language}.ts: Page: "{source}" {fault}')

    def test_complete_file_passes(self):
        self.write()
        self.assert_passes()

    def test_missing_text(self):
        self.write({source: words for source, words in WORDS.items() if source != "Point now?"})
        self.assert_fault('i18n_en.ts: Page: "Point now?" is missing')

    def test_text_in_another_context_is_missing(self):
        self.write()
        self.file().write_text(self.file().read_text().replace("<name>Page<", "<name>Elsewhere<"))
        self.assert_fault('i18n_en.ts: Page: " kB" is missing')
        self.assert_fault('i18n_en.ts: Elsewhere: " kB" is no text of the sources')

    def test_text_that_the_sources_no_longer_have(self):
        self.write({**WORDS, "Gone": "Gone"})
        self.assert_fault('i18n_en.ts: Page: "Gone" is no text of the sources')

    def test_text_that_lupdate_left_as_obsolete(self):
        for state in ("obsolete", "vanished"):
            self.write(state=f' type="{state}"')
            self.assert_fault('i18n_en.ts: Page: " kB" is no text of the sources')

    def test_unfinished_translation(self):
        self.write(state=' type="unfinished"')
        self.assert_fault('i18n_en.ts: Page: " kB" is unfinished')

    def test_empty_translation(self):
        self.assert_words_fault("Point now?", "", "is empty")

    def test_key_without_words(self):
        self.assert_words_fault("EV_BATTERY_LOW", "EV_BATTERY_LOW", "is a key without words")

    def test_other_arguments(self):
        fault = "has other arguments (%1 ...) than the source"
        self.assert_words_fault("%1 of %2 h", "%1 of 5 h", fault)
        self.assert_words_fault("%1 of %2 h", "%1 of %1 h", fault)
        self.assert_words_fault(" kB", " %1 kB", fault)

    def test_arguments_may_change_places(self):
        self.write({**WORDS, "%1 of %2 h": "%2: %1 h"})
        self.assert_passes()

    def test_blanks_at_the_ends(self):
        self.assert_words_fault(" kB", "kB", "must begin with a blank exactly if the source does")
        self.assert_words_fault("Time left: ", "Time left:", "must end with a blank, as the source does")
        self.assert_words_fault(" kB", " kB ", "ends with a blank, and the source doesn't")

    def test_wide_colon_needs_no_blank(self):
        self.list("ja")
        self.write({**WORDS, "Time left: ": "\u6b8b\u308a\uff1a"}, "ja")
        self.assert_passes()

    def test_question_mark_of_an_action(self):
        fault = 'must end with "?" exactly if the source does'
        self.assert_words_fault("Point now?", "\u6307\u5411\uff1f", fault, "zh")
        self.assert_words_fault("EV_BATTERY_LOW", "Battery low?", fault)

    def test_character_that_the_latin_face_lacks(self):
        fault = "has characters outside of Latin-1: \u0153"
        self.assert_words_fault("EV_BATTERY_LOW", "C\u0153ur", fault, "fr")

    def test_listed_language_without_a_file(self):
        self.write()
        self.list("en", "de")
        self.assert_fault("i18n_de.ts: there is no such file, but the list of languages has it")

    def test_language_that_is_not_listed_is_checked_when_named(self):
        self.write()
        self.write(language="de", state=' type="unfinished"')
        self.assert_passes()
        self.assertEqual(self.run_tool("de").returncode, 1)

    def test_file_of_another_language(self):
        self.write(header="de")
        self.assert_fault('i18n_en.ts: is a file of language "de"')

    def test_broken_file(self):
        self.file().write_text("<TS>")
        self.assertEqual(self.run_tool().returncode, 1)

    def test_text_twice(self):
        self.write()
        text = self.file().read_text()
        entry = text[text.index("<message>"):text.index("</message>") + len("</message>")]
        self.file().write_text(text.replace(entry, entry * 2, 1))
        self.assert_fault('i18n_en.ts: Page: "EV_BATTERY_LOW" is there twice')

    def test_text_outside_of_any_context(self):
        self.write()
        (self.root / "src/page.h").write_text(HEADER.replace("    Q_OBJECT\n", ""))
        result = self.run_tool()
        self.assertEqual(result.returncode, 1)
        self.assertIn("Q_OBJECT", result.stderr)

    def test_sources_without_texts(self):
        self.write()
        (self.root / "src/page.cpp").write_text("")
        self.assert_fault("no texts found in the sources")

    def test_update_keeps_finished_words_and_drops_those_of_no_use(self):
        words = {source: text for source, text in WORDS.items() if source != "Point now?"}
        self.write({**words, "Gone": "Gone"})
        result = self.run_tool("--update")
        self.assertEqual(result.returncode, 0)
        self.assertIn('i18n_en.ts: 1 to translate\n    Page: "Point now?"\n', result.stdout)
        text = self.file().read_text()
        self.assertIn("Connect power supply", text)
        self.assertNotIn("Gone", text)
        self.assert_fault('i18n_en.ts: Page: "Point now?" is unfinished')

    def test_update_makes_the_file_of_a_new_language(self):
        self.write()
        self.assertEqual(self.run_tool("--update", "de").returncode, 0)
        self.assertIn('language="de"', self.file("de").read_text())


if __name__ == "__main__":
    unittest.main()
