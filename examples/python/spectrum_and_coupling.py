# SPDX-License-Identifier: MIT
"""Draws the spectra of two windows, and what one setting moves: the sample rate along the time
scale, for two acquisition modes.

    python3 spectrum_and_coupling.py PICTURE.png
"""

import sys

import matplotlib
import numpy

import kwifunctionzel as kwi
from kwifunctionzel import enums
from kwifunctionzel.helpers import FFT

matplotlib.use("Agg")  # a file, no screen
import matplotlib.pyplot as plot  # noqa: E402

# %% Spectra: 64 samples of each window, 64 times as many points of its spectrum
figure, (upper, lower) = plot.subplots(2, 1, figsize=(7, 7), layout="constrained")
for name in ("HANN", "FLATTOP"):
    window = FFT.window(name, 64)
    spectrum = numpy.abs(numpy.fft.rfft(window, 64 * 64)) / window.sum()
    bins = numpy.arange(spectrum.size) / 64
    upper.plot(bins, 20 * numpy.log10(numpy.maximum(spectrum, 1e-9)),
               label=enums.KW_WINDOW_TYPE[name].display)
upper.set(xlim=(0, 12), ylim=(-140, 5), xlabel="bins", ylabel="dB", title="Windows")
upper.legend()

# %% A coupling: the time scale moves the sample rate
with kwi.root() as root:
    horizontal = root.Horizontal
    scale = horizontal.node("Scale")
    assert isinstance(scale, kwi.Property)
    scales = scale.values
    for mode in (enums.KW_ZEL_ACQUISITION_MODE.SAMPLE, enums.KW_ZEL_ACQUISITION_MODE.PEAK):
        with root.transaction("Acquisition mode"):
            horizontal.AcquisitionMode = mode
        rates = []
        for value in scales:
            horizontal.Scale = value
            rates.append(horizontal.AcquisitionSampleRate)
        lower.step(scales, rates, where="mid", label=mode.display)
lower.set(xscale="log", yscale="log", xlabel=f"time scale ({scale.unit_text})",
          ylabel="samples stored per second", title="What the time scale moves")
lower.legend()

figure.savefig(sys.argv[1], dpi=100, metadata={"Software": None})
print(sys.argv[1])
