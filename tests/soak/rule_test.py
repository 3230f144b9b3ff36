#!/usr/bin/python3
"""The rule of the soak: what counts as growth, and what doesn't."""
import contextlib
import importlib.machinery
import importlib.util
import io
import os
import unittest

PATH = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'run')
LOADER = importlib.machinery.SourceFileLoader('soak', PATH)
soak = importlib.util.module_from_spec(importlib.util.spec_from_loader('soak', LOADER))
LOADER.exec_module(soak)

MIB = 1024 * 1024


def rows(change=lambda minute, row: None, minutes=60):
    """A round each two minutes, with a look in between."""
    result = []
    for minute in range(1, minutes + 1):
        row = {name: 10 for name in soak.COUNTS}
        row.update(seconds=minute * 60, mark=minute % 2, round=minute // 2, heap=4 * MIB, rss=32 * MIB)
        change(minute, row)
        result.append(row)
    return result


def judge(table, short=False):
    with contextlib.redirect_stdout(io.StringIO()):
        return soak.judge(table, short)


class Rule(unittest.TestCase):
    def test_flat_is_no_fault(self):
        self.assertEqual(judge(rows()), [])
        self.assertEqual(judge(rows(minutes=4), short=True), [])

    def test_one_more_of_anything_that_is_counted_is_a_fault(self):
        for name in soak.COUNTS:
            def one_more(minute, row, name=name):
                row[name] += minute > 40
            faults = judge(rows(one_more))
            self.assertTrue(faults and faults[0].startswith(f'{name} were 10 after round 5 and 11 after 20'), faults)
            self.assertNotEqual(judge(rows(lambda minute, row, name=name: row.update({name: minute}), 4), True), [])

    def test_fewer_are_no_fault(self):
        self.assertEqual(judge(rows(lambda minute, row: row.update(descriptors=10 - (minute > 40)))), [])

    def test_between_the_ends_of_rounds_there_may_be_more(self):
        self.assertEqual(judge(rows(lambda minute, row: row.update(qt_timers=10 + 5 * (1 - row['mark'])))), [])

    def test_the_first_ten_minutes_do_not_count(self):
        def grows_at_first(minute, row):
            row['heap'] += min(minute, 10) * MIB
            row['qt_objects'] += min(minute, 10)
        self.assertEqual(judge(rows(grows_at_first)), [])

    def test_memory_may_grow_by_a_hundredth_an_hour(self):
        for name in ('rss', 'heap'):
            for hundredths, minutes, is_fault in ((0.9, 60, False), (1.3, 60, True), (0.9, 180, False), (1.1, 180, True)):
                def grow(minute, row, name=name, hundredths=hundredths):
                    row[name] += int(row[name] * hundredths / 100 * (minute - 11) / 60)
                self.assertEqual(bool(judge(rows(grow, minutes))), is_fault, (name, hundredths, minutes))

    def test_what_goes_up_and_down_is_no_growth_in_a_quarter_of_an_hour(self):
        def jitter(minute, row):
            row['heap'] += 16 * 1024 * (minute % 4 - 1)
        self.assertEqual(judge(rows(jitter, 25)), [])

    def test_one_outlier_is_no_growth(self):
        self.assertEqual(judge(rows(lambda minute, row: row.update(rss=row['rss'] + 8 * MIB * (minute == 59)))), [])

    def test_the_short_form_allows_memory_that_is_used_for_the_first_time(self):
        for name, kib, is_fault in (('rss', 2000, False), ('rss', 2100, True), ('heap', 250, False), ('heap', 260, True)):
            def once(minute, row, name=name, kib=kib):
                row[name] += kib * 1024 * (minute > 1)
            self.assertEqual(bool(judge(rows(once, 4), short=True)), is_fault, (name, kib))

    def test_one_round_cannot_be_compared(self):
        self.assertEqual(judge(rows(minutes=1), short=True), ['there are not two rounds to compare'])
        self.assertEqual(judge(rows(minutes=10)), ['there are not two rounds to compare'])


if __name__ == '__main__':
    unittest.main()
