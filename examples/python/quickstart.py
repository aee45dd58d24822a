"""quickstart.py: the library from Python, over numpy arrays.

    PYTHONPATH=<prefix>/lib/python3/dist-packages python3 quickstart.py
"""
import numpy as np

import zvl

a = np.linspace(0.5, 8.0, 6)
print("zvl", zvl.__version__)
print("exp:      ", zvl.exp(a))
print("pow(a, 2):", zvl.pow(a, 2))        # b broadcasts against a
print("powx:     ", zvl.powx(a, 0.5))     # one exponent for the whole array
y, z = zvl.modf([-3.75, 2.5])
print("modf:     ", y, z)

# The accuracy mode of this thread, for the block only.
with zvl.mode("EP"):
    print("exp, EP:  ", zvl.exp(a))

# Errors follow numpy's settings: a warning by default, here an exception.
with np.errstate(divide="raise"):
    try:
        zvl.ln([1.0, 0.0])
    except FloatingPointError as e:
        print("ln:       ", e)
