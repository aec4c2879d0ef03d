"""How much of a storm there is to be, and what is measured in it.

A storm is a test with a verdict. It comes in two measures: a short one that any run of the tests
affords, and the whole one of script/storms.
"""

import os

IS_WHOLE = os.environ.get("STORM") == "whole"


def measure(short, whole):
    return whole if IS_WHOLE else short


def figure(what, value, unit):
    """For the table of script/storms."""
    print(f"FIGURE\t{what}\t{value:.3g} {unit}".rstrip(), flush=True)
