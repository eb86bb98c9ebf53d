"""The history check of the simulated life (laptop/life) detects every kind of wrong file."""
import pytest

from laptop.life.recorded import MONTH, Recorded

AT = 1_790_000_000.0
BEFORE = [(AT - MONTH - 1, 50, False, False), (AT - 60, 50, False, False)]
FILE = [(AT - 60, 50, False, False), (AT + 0.1, 50, False, False), (AT + 25, 50, True, True),
        (AT + 90.1, 51, True, True), (AT + 90.2, 51, True, True), (AT + 150.1, 51, True, True)]


@pytest.fixture
def recorded():
    recorded = Recorded(BEFORE)
    recorded.note('launch', AT, AT + 1, (50, False, False))
    recorded.note('change', AT + 24, AT + 26, (50, True, True))
    recorded.note('timer', AT + 90, AT + 91, (51, True, True))
    recorded.note('timer', AT + 150, AT + 151, (51, True, True))
    return recorded


def test_a_correct_file_passes_with_one_early_change(recorded):
    assert recorded.check(FILE) == 1  # the 51% of the first timer was recorded as a change a moment before


def test_samples_older_than_a_month_must_be_dropped():
    recorded = Recorded(BEFORE)
    recorded.note('launch', AT, AT + 1, (50, False, False))
    recorded.note('timer', AT + MONTH + 60, AT + MONTH + 61, (50, False, False))

    assert recorded.check([(AT + MONTH + 60.1, 50, False, False)]) == 0
    with pytest.raises(AssertionError):
        recorded.check([(AT + 0.1, 50, False, False), (AT + MONTH + 60.1, 50, False, False)])


@pytest.mark.parametrize('missing', [0, 1, 2, 5])
def test_a_missing_sample_is_detected(recorded, missing):
    with pytest.raises(AssertionError):
        recorded.check(FILE[:missing] + FILE[missing + 1:])


@pytest.mark.parametrize('doubled', range(len(FILE)))
def test_a_duplicate_sample_is_detected(recorded, doubled):
    with pytest.raises(AssertionError):
        recorded.check(FILE[:doubled] + FILE[doubled:doubled + 1] + FILE[doubled:])


@pytest.mark.parametrize('place', range(len(FILE)))
@pytest.mark.parametrize('wrong', [(0, 1, False, False), (0, 0, True, False), (0, 0, False, True),
                                   (-70, 0, False, False), (70, 0, False, False)])
def test_a_wrong_sample_is_detected(recorded, place, wrong):
    time, percent, charging, plugged = FILE[place]
    other = (time + wrong[0], percent + wrong[1], charging != wrong[2], plugged != wrong[3])
    with pytest.raises(AssertionError):
        recorded.check(FILE[:place] + [other] + FILE[place + 1:])


def test_a_value_that_never_occurred_is_detected(recorded):
    with pytest.raises(AssertionError):
        recorded.check(FILE[:3] + [(AT + 90.1, 52, True, True)] + FILE[4:])
