"""Breaks what the program depends on, one thing at a time: faults.py [REGEX]"""

import sys

import command_faults  # noqa: F401  each adds its faults to the table
import machine_faults  # noqa: F401
import page_faults  # noqa: F401
from table import try_out

sys.exit(try_out(sys.argv[1]) > 0)
