"""The package starsift: numbers of every kind, searches in threads, and how they end."""

import ast
import asyncio
import copy
import decimal
import doctest
import math
import multiprocessing
import numbers
import os
import pathlib
import pickle
import re
import signal
import subprocess
import sys
import tempfile
import threading
import types
import unittest
import unittest.mock
import warnings
from concurrent.futures import ThreadPoolExecutor
from fractions import Fraction

import numpy

import starsift

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


def split(rows, columns):
    """A market split that nothing solves in a short time."""
    state = 12345
    matrix = []
    for _ in range(rows):
        matrix.append([])
        for _ in range(columns):
            state = (state * 6364136223846793005 + 1442695040888963407) % 2**64
            matrix[-1].append((state >> 33) % 100)
    sums = [sum(row) // 2 for row in matrix]
    return starsift.Problem(lower=[0] * columns, upper=[1] * columns, Ag=matrix, bg=sums)


def sums_to(total):
    return starsift.Problem(lower=[0, 0], upper=[total, total], Ag=[[1, 2]], bg=[total])


class Known(unittest.TestCase):
    def best(self):
        return starsift.Problem(lower=[0] * 3, upper=[60] * 3, Ag=[[7, 11, 13]], bg=[400], maximise=[1, 1, 1])

    def test_solutions_of_an_earlier_search_are_kept_and_not_told(self):
        problem, told = self.best(), []
        first = problem.search()
        again = problem.search(known=first.solutions, on_solution=told.append)
        self.assertEqual((again.proof, again.best, told), ("optimum", first.best, []))
        self.assertEqual([s.x for s in again.solutions], [s.x for s in first.solutions])

    def test_wrong_ones_are_dropped(self):
        wrong = starsift.Solution([1, 1, 1])
        self.assertNotIn([1, 1, 1], [s.x for s in self.best().search(known=[wrong]).solutions])


class Figures(unittest.TestCase):
    """Of a drawing that nobody looks at the data are compared."""

    def setUp(self):
        import matplotlib

        matplotlib.use("Agg")

    def test_a_reduction_is_drawn_with_a_line_for_each_basis(self):
        problem = split(3, 20)
        bases = problem.profile(beta=10)
        self.assertEqual([basis.name for basis in bases], ["before", "LLL", "blocks of 10"])
        axes = problem.plot_profile(beta=10)
        self.assertEqual([list(line.get_ydata()) for line in axes.get_lines()], [b.lengths for b in bases])
        self.assertEqual([text.get_text() for text in axes.get_legend().get_texts()], [b.name for b in bases])

    def test_a_search_is_drawn_to_its_end(self):
        result = split(4, 30).search(sol=0)
        figure_axes = result.plot().figure.axes
        solutions, nodes = figure_axes[0].get_lines()[0], figure_axes[1].get_lines()[0]
        self.assertEqual(solutions.get_xdata()[-1], result.seconds)
        self.assertEqual(solutions.get_ydata()[-1], len(result.solutions))
        self.assertEqual(nodes.get_ydata()[-1], result.nodes)

    def test_axes_may_be_given(self):
        from matplotlib import pyplot

        axes = pyplot.subplots()[1]
        self.assertIs(split(3, 20).plot_profile(axes), axes)
        self.assertIs(sums_to(9).search().plot(axes), axes)

    def test_a_history_is_bounded_and_keeps_its_end(self):
        history = starsift._History()
        for moment in range(100_000):
            history.add(moment)
        self.assertLess(len(history.moments), history.LIMIT)
        self.assertGreater(len(history.moments), history.LIMIT // 4)
        steps = {b - a for a, b in zip(history.moments, history.moments[1:])}
        self.assertEqual(len(steps), 1)
        self.assertGreater(history.moments[-1], 99_000)


class Numbers(unittest.TestCase):
    def row_of(self, value):
        problem = starsift.Problem(lower=[0], upper=[1], Ag=[[value]], bg=[1])
        return problem.to_opt().splitlines()[2]

    def test_integers_of_any_size(self):
        self.assertEqual(self.row_of(10**40), f"[ [ {10**40} ]")

    def test_integers_beyond_what_python_reads_as_text(self):
        large = 7 * 10**5000 + 1
        problem = starsift.Problem(lower=[0], upper=[math.inf], Ag=[[1]], bg=[large])
        self.assertTrue(problem.check([[large]])[0].is_right)
        amount = problem.check([[Fraction(1, large)]])[0].violations[0].amount
        self.assertEqual(amount, large - Fraction(1, large))

    def test_fractions_and_decimals(self):
        self.assertEqual(self.row_of(Fraction(1, 3)), "[ [ 1/3 ]")
        self.assertEqual(self.row_of(decimal.Decimal("0.10")), "[ [ 0.1 ]")

    def test_integers_of_numpy(self):
        matrix = numpy.array([[12, 17], [1, 1]], dtype=numpy.int64)
        problem = starsift.Problem(lower=numpy.zeros(2, int), upper=[9, 9], Ag=matrix, bg=[46, 3])
        self.assertEqual(problem.search().solutions[0].x, [1, 2])

    def test_arrays_of_integers_of_every_width_are_lists_of_them(self):
        largest = 2**64 - 1
        for width in (numpy.int8, numpy.uint32, numpy.int64):
            self.assertEqual([type(x) for x in starsift._list(numpy.array([3, 4], width))], [int, int])
        self.assertEqual(starsift._list(numpy.array([largest], numpy.uint64)), [largest])
        self.assertEqual(starsift._list(numpy.array([[1, 2], [3, 4]])), [[1, 2], [3, 4]])
        with self.assertRaises(TypeError):
            starsift._list(numpy.array(5))

    def test_a_float_is_exact_and_warns_once(self):
        starsift._has_warned = False
        with self.assertWarns(starsift.FloatWarning):
            self.assertEqual(self.row_of(0.5), "[ [ 0.5 ]")
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            self.assertNotEqual(self.row_of(0.1), "[ [ 0.1 ]")

    def test_floats_of_every_width_are_exact(self):
        for real in (numpy.float16, numpy.float32, numpy.float64, numpy.longdouble):
            with self.subTest(real=real):
                self.assertEqual(self.row_of(real(-0.75)), "[ [ -0.75 ]")
                self.assertEqual(starsift._text(real("-inf")), "-inf")
        wide = 1 + numpy.finfo(numpy.longdouble).eps
        self.assertNotEqual(float(wide), wide)
        self.assertEqual(Fraction(starsift._text(wide)), Fraction(*wide.as_integer_ratio()))

    def test_other_reals_are_taken_where_a_float_holds_them(self):
        class Real:
            def __init__(self, value):
                self.value = value

            def __float__(self):
                return float(self.value)

            def __eq__(self, other):
                return self.value == (other.value if isinstance(other, Real) else other)

        numbers.Real.register(Real)
        self.assertEqual(self.row_of(Real(Fraction(3, 4))), "[ [ 0.75 ]")
        with self.assertRaisesRegex(TypeError, "^not an exact number: "):
            self.row_of(Real(Fraction(1, 3)))

    def test_numbers_of_wrong_value(self):
        nans = (math.nan, numpy.float32("nan"), decimal.Decimal("nan"), decimal.Decimal("sNaN"))
        for value in nans:
            with self.subTest(value=value), self.assertRaisesRegex(starsift.Error, "^nan is not a number$"):
                self.row_of(value)
        for value in ("x", decimal.Decimal("1e2000000")):
            with self.subTest(value=value), self.assertRaises(starsift.Error):
                self.row_of(value)

    def test_what_is_no_number(self):
        for value in (None, 1j, numpy.complex64(1), [1]):
            with self.subTest(value=value), self.assertRaisesRegex(TypeError, "^not an exact number: "):
                self.row_of(value)
        for value in (True, numpy.bool_(True)):
            with self.subTest(value=value), self.assertRaisesRegex(TypeError, "^a truth value is not a number$"):
                self.row_of(value)

    def test_a_text_is_no_list(self):
        problem = sums_to(6)
        for call in (
            lambda: problem.check(["24"]),
            lambda: problem.add_equation("12", 3),
            lambda: starsift.Problem(lower=[0], upper=[5], Ag="3", bg="3"),
        ):
            with self.assertRaises(TypeError):
                call()

    def test_a_warning_that_is_an_error_is_one_each_time(self):
        with warnings.catch_warnings(), unittest.mock.patch("starsift._has_warned", False):
            warnings.simplefilter("error", starsift.FloatWarning)
            for _ in range(2):
                with self.assertRaises(starsift.FloatWarning):
                    self.row_of(0.5)

    def test_fractions_come_out(self):
        problem = starsift.Problem(lower=[0], upper=[1], decimals=[1], Ag=[[2]], bg=[1])
        self.assertEqual(problem.check([["1/2"]])[0].violations, [])
        amount = problem.check([[0.75]])[0].violations[0].amount
        self.assertEqual(amount, Fraction(1, 2))
        self.assertIsInstance(amount, Fraction)


class Problems(unittest.TestCase):
    def test_rows_of_every_kind(self):
        problem = starsift.Problem(
            lower=[0, 0], upper=[9, math.inf], names=["a", "b"], Ag=[[1, 1], [1, 0]], bg=[9, 1],
            qg=[0, 2], Au=[[0, 1]], lu=[-math.inf], ru=[5], minimise=[1, 0],
        )
        self.assertEqual(problem.search().solutions[0].x, [5, 4])
        self.assertEqual(starsift.Problem.from_opt(problem.to_opt()).to_opt(), problem.to_opt())

    def modulo(self, modulus):
        return starsift.Problem(lower=[0], upper=[9], Ag=[[1]], bg=[2], qg=[modulus])

    def test_moduli_of_every_kind(self):
        for modulus in (3, Fraction(6, 2), decimal.Decimal("3.0"), "3", "6/2"):
            with self.subTest(modulus=modulus):
                found = self.modulo(modulus).search(sol=0).solutions
                self.assertEqual(sorted(s.x[0] for s in found), [2, 5, 8])
        for zero in (0, decimal.Decimal("0.0"), "0"):
            with self.subTest(modulus=zero):
                self.assertEqual(self.modulo(zero).search(sol=0).count, 1)
        for wrong in ("x", "1/0", "inf", math.inf):
            with self.subTest(modulus=wrong), self.assertRaises(starsift.Error):
                self.modulo(wrong)

    def test_lists_of_different_lengths_are_told_if_they_were_given(self):
        rows = {"lower": [0, 0], "upper": [1, 1], "Ag": [[1, 1], [1, 2]]}
        for told, given in (
            ("lower 2, upper 1", {"lower": [0, 0], "upper": [1]}),
            ("lower 1, upper 1, decimals 2", {"lower": [0], "upper": [1], "decimals": [0, 1]}),
            ("lower 1, upper 1, names 0", {"lower": [0], "upper": [1], "names": []}),
            ("Ag 2, bg 1", rows | {"bg": [1]}),
            ("Ag 2, bg 2, qg 1", rows | {"bg": [1, 1], "qg": [2]}),
        ):
            with self.subTest(told), self.assertRaisesRegex(starsift.Error, f"^lists of different lengths: {told}$"):
                starsift.Problem(**given)

    def test_a_matrix_is_a_list_of_rows(self):
        for flat in ([1, 2], numpy.array([1, 2]), [Fraction(1), decimal.Decimal(2)], [[1, 2], 3]):
            with self.subTest(flat=flat), self.assertRaisesRegex(TypeError, "^Ag is a list of rows, not of numbers: "):
                starsift.Problem(lower=[0, 0], upper=[1, 1], Ag=flat, bg=[1])
        with self.assertRaisesRegex(TypeError, "^Au is a list of rows, not of numbers: "):
            starsift.Problem(lower=[0, 0], upper=[1, 1], Au=[1, 2], lu=[1], ru=[2])

    def test_a_row_is_no_number_and_a_name_is_none_either(self):
        with self.assertRaisesRegex(TypeError, "^a list of numbers, not 5 alone$"):
            sums_to(4).add_equation(5, 3)
        with self.assertRaisesRegex(TypeError, "^a name is a text, not 5$"):
            sums_to(4).add_equation([1, 1], 3, name=5)
        with self.assertRaisesRegex(TypeError, "^decimals: an integer, not 0.5$"):
            sums_to(4).add_variable(0, 1, decimals=0.5)

    def test_there_is_no_variable_or_row_before_the_first(self):
        problem = sums_to(4)
        for index in (-1, -(2**70), 2**70):
            for call in (problem.variable_name, lambda index: problem.add_equation({index: 1}, 3)):
                with self.subTest(index=index), self.assertRaisesRegex(starsift.Error, f"^there is no variable {index}$"):
                    call(index)
            with self.subTest(index=index), self.assertRaisesRegex(starsift.Error, f"^there is no row {index}$"):
                problem.row_name(index)
        with self.assertRaisesRegex(starsift.Error, "^row g2: there is no variable 2$"):
            problem.add_equation({2: 1}, 3)
        with self.assertRaisesRegex(TypeError, "^the index of a variable: an integer, not 'tea'$"):
            problem.add_equation({"tea": 1}, 3)

    def test_copies_are_their_own(self):
        problem = sums_to(4)
        for copied in (copy.copy(problem), copy.deepcopy(problem)):
            copied.add_variable(0, 1)
            self.assertEqual((problem.variable_count, copied.variable_count), (2, 3))

    def test_points_of_every_kind(self):
        problem = starsift.Problem(lower=[0, 0], upper=[2**70, 9], Au=[[1, 1]], lu=[0], ru=[2**70])
        points = [[1, 2], (2**64, Fraction(4, 2)), numpy.array([3, 4]), iter(["5", 6])]
        self.assertTrue(all(verdict.is_right for verdict in problem.check(points)))
        self.assertEqual(problem.check([[2**70, 1]])[0].violations[0].amount, 1)
        for wrong in ([[1]], [[1, 2, 3]], [["x", 1]]):
            with self.subTest(wrong=wrong), self.assertRaises(starsift.Error):
                problem.check(wrong)
        with self.assertRaises(TypeError):
            problem.check([[True, 1]])

    def test_a_file(self):
        problem = starsift.read(ROOT / "examples/knapsack/knapsack.opt")
        records = problem.from_sol((ROOT / "examples/knapsack/knapsack.sol").read_text())
        written = problem.to_sol(records)
        self.assertEqual(written, (ROOT / "examples/knapsack/expected.sol").read_text())


class Searches(unittest.TestCase):
    def test_all_solutions_with_a_call_for_each(self):
        told = []
        result = sums_to(20).search(sol=0, on_solution=told.append)
        self.assertEqual(result.proof, "all found")
        self.assertEqual(len(result.solutions), 11)
        self.assertCountEqual([s.x for s in told], [s.x for s in result.solutions])

    def test_in_a_pool_of_threads(self):
        with ThreadPoolExecutor(4) as pool:
            results = list(pool.map(lambda n: sums_to(n).search(sol=0), range(10, 30)))
        self.assertEqual([r.count for r in results], [n // 2 + 1 for n in range(10, 30)])

    def test_other_threads_run_meanwhile(self):
        ran = threading.Event()

        def progress(_):
            if ran.is_set():
                raise StopIteration("enough")

        threading.Timer(0.05, ran.set).start()
        with self.assertRaisesRegex(StopIteration, "enough"):
            split(7, 60).search(prove=False, time=30, on_progress=progress)

    def test_an_event_ends_it_in_another_thread_with_what_it_has(self):
        stop, found = threading.Event(), threading.Event()
        problem = sums_to(60)
        for _ in range(40):
            problem.add_variable(0, 1)
        with ThreadPoolExecutor(1) as pool:
            run = pool.submit(
                problem.search, sol=0, threads=1, time=60, stop=stop, on_solution=lambda _: found.set()
            )
            self.assertTrue(found.wait(60))
            stop.set()
            result = run.result()
        self.assertEqual((result.end, result.proof), ("stopped", "none"))
        self.assertGreater(len(result.solutions), 0)

    def test_an_event_that_is_set_ends_it_at_once(self):
        stop = multiprocessing.Event()
        stop.set()
        self.assertEqual(split(7, 60).search(prove=False, time=30, stop=stop).end, "stopped")
        self.assertLess(len(split(7, 60).profile(stop=stop)), 3)

    def test_an_event_that_fails_leaves_it(self):
        stop = types.SimpleNamespace(is_set=lambda: 1 / 0)
        with self.assertRaises(ZeroDivisionError):
            split(7, 60).search(prove=False, time=30, stop=stop)

    def test_an_exception_of_a_call_leaves_it(self):
        def refuse(_):
            raise KeyError("no")

        with self.assertRaises(KeyError):
            sums_to(20).search(sol=0, on_solution=refuse)

    def test_ctrl_c_ends_it_with_what_it_has(self):
        timer = threading.Timer(0.3, os.kill, (os.getpid(), signal.SIGINT))
        timer.start()
        result = split(7, 60).search(prove=False, time=30)
        timer.join()
        self.assertEqual(result.end, "stopped")

    def test_ctrl_c_in_a_call_ends_it_with_what_it_has(self):
        found = []

        def interrupt(solution):
            found.append(solution)
            if len(found) == 5:
                os.kill(os.getpid(), signal.SIGINT)

        result = sums_to(60).search(sol=0, on_solution=interrupt)
        self.assertGreaterEqual(len(result.solutions), 5)

    def test_a_daemon_thread_may_search_to_the_end_of_the_interpreter(self):
        script = (
            "import threading, time, sys; sys.path.insert(0, sys.argv[1]); import test_starsift\n"
            "hard = test_starsift.split(7, 60)\n"
            "search = lambda: hard.search(prove=False, time=30, threads=1)\n"
            "threading.Thread(target=search, daemon=True).start()\n"
            "time.sleep(0.3)\n"
        )
        run = subprocess.run(
            [sys.executable, "-c", script, str(ROOT / "tests/python")],
            capture_output=True, text=True, timeout=300, check=False,
        )
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_a_result_is_a_table(self):
        page = sums_to(4).search(sol=0)._repr_html_()
        self.assertEqual(page.count("<tr>"), 4)
        self.assertIn("All 3 solutions", page)
        self.assertNotIn("more</p>", page)

    def test_a_long_table_is_cut(self):
        page = sums_to(400).search(sol=0)._repr_html_()
        self.assertEqual(page.count("<tr>"), 101)
        self.assertIn("<p>and 101 more</p>", page)

    def test_a_frame_has_exact_numbers_by_the_names_of_their_columns(self):
        pandas = types.ModuleType("pandas")
        pandas.DataFrame = lambda rows, dtype: (rows, dtype)
        with unittest.mock.patch.dict(sys.modules, pandas=pandas):
            rows, dtype = sums_to(2).search(sol=0).to_pandas()
        self.assertIs(dtype, object)
        self.assertCountEqual(rows, [
            {"target norm": 0, "slack norm": 0, "x1": 0, "x2": 1},
            {"target norm": 0, "slack norm": 0, "x1": 2, "x2": 0},
        ])

    def test_a_limit_of_any_real_number_of_seconds(self):
        self.assertEqual(split(7, 60).search(sol=0, prove=False, threads=1, time=0.5).end, "time")
        for limit in (0.5, Fraction(1, 2), decimal.Decimal("0.5"), numpy.float32(0.5), numpy.int64(1)):
            with self.subTest(limit=limit):
                self.assertEqual(starsift._seconds(limit), 1)
        for wrong in (-1, -0.5, math.nan, math.inf, decimal.Decimal("sNaN")):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(starsift.Error, "^time is a finite number of seconds"):
                sums_to(4).search(time=wrong)
        for wrong in ("60", True, 1j, [1]):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(TypeError, "^time is a number of seconds, not "):
                sums_to(4).search(time=wrong)

    def test_a_list_is_no_solution(self):
        problem = sums_to(4)
        for call in (problem.to_sol, lambda given: problem.search(known=given)):
            with self.assertRaisesRegex(TypeError, r"^a Solution, not \[3, 2\]$"):
                call([[3, 2]])
        with self.assertRaisesRegex(TypeError, "^seconds: an integer, not 0.5$"):
            problem.to_sol([starsift.Solution([4, 0], seconds=0.5)])

    def test_progress_tells_what_it_knows(self):
        told = []
        split(7, 60).search(sol=0, prove=False, threads=1, time=1, on_progress=told.append)
        moment = told[-1]
        self.assertEqual(
            repr(moment),
            f"Progress(seconds={moment.seconds}, passes={moment.passes}, solutions={moment.solutions}, "
            f"tree_share={moment.tree_share}, nodes={moment.nodes})",
        )
        self.assertIn("How far a search is.", starsift.Progress.__doc__)

    def test_an_unknown_option(self):
        with self.assertRaisesRegex(starsift.Error, "Malformed parameter: soll=1"):
            sums_to(4).search(soll=1)


class Dish(starsift.Problem):
    """A problem that knows more than its rows."""


class Pickles(unittest.TestCase):
    def menu(self, kind=starsift.Problem):
        problem = kind(lower=[0, 0], upper=[9, math.inf], names=["tea", "r\u00e9z"], minimise=["1/3", 0])
        problem.add_range({0: 1}, -math.inf, 5, name="first")
        problem.add_equation([1, 2], 10**30)
        return problem

    def test_of_problems_keep_names_and_the_order_of_rows(self):
        problem = self.menu()
        for protocol in range(2, pickle.HIGHEST_PROTOCOL + 1):
            again = pickle.loads(pickle.dumps(problem, protocol))
            self.assertEqual(again.to_opt(), problem.to_opt())
            self.assertEqual([again.variable_name(j) for j in range(2)], ["tea", "r\u00e9z"])
            self.assertEqual([again.row_name(i) for i in range(2)], ["first", "g1"])

    def test_of_unfinished_problems_can_be_gone_on_with(self):
        again = pickle.loads(pickle.dumps(starsift.Problem(lower=[0], upper=[5])))
        again.add_equation([2], 6)
        self.assertEqual(again.search().solutions[0].x, [3])

    def test_keep_what_a_class_of_the_user_has(self):
        dish = self.menu(Dish)
        dish.cook = "Ann"
        again = pickle.loads(pickle.dumps(dish))
        self.assertEqual((type(again), again.cook, again.to_opt()), (Dish, "Ann", dish.to_opt()))

    def test_of_results_are_equal_to_them(self):
        moments = []
        result = self.menu().search(on_progress=moments.append)
        again = pickle.loads(pickle.dumps(result))
        self.assertEqual(again.solutions, result.solutions)
        self.assertEqual((again.verdict, again.best), (result.verdict, result.best))
        self.assertGreater(len(result.history), 0)
        self.assertEqual(repr(again.history), repr(result.history))
        verdicts = self.menu().check([[1, 1]])
        self.assertEqual(pickle.loads(pickle.dumps(verdicts)), verdicts)

    def test_of_errors_have_their_text(self):
        error = pickle.loads(pickle.dumps(starsift.Error("row u1: no bound is finite")))
        self.assertEqual((type(error), str(error)), (starsift.Error, "row u1: no bound is finite"))

    def test_go_through_a_pool_of_processes(self):
        with multiprocessing.get_context("spawn").Pool(2) as pool:
            results = pool.map(starsift.Problem.search, map(sums_to, (10, 11, 12)))
        self.assertEqual([result.solutions[0].x[0] % 2 for result in results], [0, 1, 0])


class Locale(unittest.TestCase):
    """A process whose decimals begin with a comma, as in much of Europe."""

    SCRIPT = (
        "import locale, sys, starsift\n"
        "locale.setlocale(locale.LC_NUMERIC, sys.argv[1])\n"
        "text = '[ 1.25 ] [ [ 0.001 0.1 ] ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 0.1 ] [ 20.7 ] [ 1 2 ] [ 0.5 0.25 ] [ 9.5 9 ]'\n"
        "problem = starsift.Problem.from_opt(text)\n"
        "result = problem.search(seed=1, iters=1, prove=False)\n"
        "records = problem.from_sol('[ 0.5 3.75 ]\\n[ 0.6 3.25 ]\\n')\n"
        "print(problem.to_opt(), problem.to_sol(records + result.solutions), problem.check([['0.05', '9.75']]))\n"
        "print(locale.str(1.5), file=sys.stderr)\n"
    )

    def define(self, folder):
        """Makes the locale "comma" in the folder, of nothing but its numbers."""
        letters = "".join(f"<U{code:04X}> /x{code:02x}\n" for code in range(128))
        head = "<code_set_name> ASCII\n<mb_cur_max> 1\nCHARMAP\n"
        (folder / "charmap").write_text(f"{head}{letters}END CHARMAP\n")
        (folder / "source").write_text(
            'LC_NUMERIC\ndecimal_point ","\nthousands_sep "."\ngrouping 3\nEND LC_NUMERIC\n'
        )
        # Its status is 1, since the other categories are missing.
        subprocess.run(
            ["localedef", "-c", "-f", folder / "charmap", "-i", folder / "source", folder / "comma"],
            capture_output=True, timeout=60, check=False,
        )

    def test_changes_no_number(self):
        with tempfile.TemporaryDirectory() as scratch:
            self.define(pathlib.Path(scratch))
            runs = [
                subprocess.run(
                    [sys.executable, "-c", self.SCRIPT, name], env=os.environ | {"LOCPATH": scratch},
                    capture_output=True, text=True, timeout=60, check=True,
                )
                for name in ("C", "comma")
            ]
        self.assertEqual([run.stderr for run in runs], ["1.5\n", "1,5\n"])
        self.assertEqual(runs[0].stdout, runs[1].stdout)
        self.assertIn("0.6 3.25", runs[0].stdout)


class Package(unittest.TestCase):
    def test_its_version_is_that_of_the_project(self):
        project = (ROOT / "CMakeLists.txt").read_text()
        self.assertRegex(project, rf"\n  VERSION {re.escape(starsift.__version__)}\n")


class Examples(unittest.TestCase):
    """Scripts of the guide, each beside what it prints."""

    def test_each_prints_what_is_beside_it(self):
        scripts = sorted((ROOT / "docs/python").glob("*.py"))
        self.assertGreaterEqual(len(scripts), 6)
        for script in scripts:
            with self.subTest(script=script.name):
                run = subprocess.run(
                    [sys.executable, script], capture_output=True, text=True, timeout=300, check=False
                )
                self.assertEqual(run.stderr, "")
                self.assertEqual(run.stdout, script.with_suffix(".out").read_text())


class Stubs(unittest.TestCase):
    """The file for type checkers names what the extension module has."""

    @staticmethod
    def own(names):
        return {name for name in names if not name.startswith("_") or name in ("__init__", "__version__")}

    def test_have_the_names_of_the_module(self):
        inner = starsift._starsift
        page = ast.parse((ROOT / "python/starsift/_starsift.pyi").read_text())
        classes = {node.name: node for node in page.body if isinstance(node, ast.ClassDef)}
        values = {node.target.id for node in page.body if isinstance(node, ast.AnnAssign)}
        self.assertEqual(self.own(vars(inner)), set(classes) | values)
        for name, node in classes.items():
            with self.subTest(name):
                members = {getattr(part, "name", None) or part.target.id for part in node.body
                           if isinstance(part, (ast.FunctionDef, ast.AnnAssign))}
                self.assertEqual(self.own(vars(getattr(inner, name))) - {"__init__"}, members - {"__init__"})

    def test_have_the_arguments_of_its_methods(self):
        page = ast.parse((ROOT / "python/starsift/_starsift.pyi").read_text())
        problem = next(node for node in page.body if getattr(node, "name", "") == "Problem")
        for method in problem.body:
            if not isinstance(method, ast.FunctionDef) or method.name == "__init__":
                continue
            with self.subTest(method.name):
                told = re.search(r"\((.*)\)", getattr(starsift._starsift.Problem, method.name).__doc__)[1]
                self.assertEqual(len(re.findall(r"\barg\d+: |\bself: ", told)), len(method.args.args))


class Reference(unittest.TestCase):
    def test_has_every_public_name(self):
        page = (ROOT / "docs/reference/index.rst").read_text()
        documented = set(re.findall(r"^\.\. auto(?:class|function|exception):: (\w+)", page, re.MULTILINE))
        self.assertEqual(documented, set(starsift.__all__) - {"__version__"})


class Notebook(unittest.TestCase):
    """The tour runs from its first cell to the last one, with the outputs that are stored in it."""

    @staticmethod
    def outputs(book):
        """What the cells print and return; of what is drawn or a table, that it is there."""
        for cell in book.cells:
            for output in cell.get("outputs", []):
                data = output.get("data", {})
                kinds = {"image/png", "text/html"}.intersection(data)
                yield kinds or data.get("text/plain") or output.get("text")

    def test_runs_as_stored(self):
        import nbclient
        import nbformat

        stored = nbformat.read(ROOT / "docs/python/tour.ipynb", 4)
        run = copy.deepcopy(stored)
        with tempfile.TemporaryDirectory() as scratch:
            folders = dict.fromkeys(("IPYTHONDIR", "JUPYTER_RUNTIME_DIR", "MPLCONFIGDIR"), scratch)
            # Else the debugger of the kernel warns of frozen modules.
            folders["PYDEVD_DISABLE_FILE_VALIDATION"] = "1"
            with unittest.mock.patch.dict(os.environ, folders):
                client = nbclient.NotebookClient(run, timeout=300, kernel_name="python3")
                # execute() leaves a loop of its own open.
                asyncio.run(client.async_execute())
        self.assertEqual(list(self.outputs(run)), list(self.outputs(stored)))
        self.assertGreater(len(list(self.outputs(run))), 8)


def load_tests(_loader, tests, _pattern):
    tests.addTests(doctest.DocTestSuite(starsift))
    tests.addTests(doctest.DocFileSuite(str(ROOT / "docs/python.md"), module_relative=False))
    return tests


if __name__ == "__main__":
    unittest.main()
