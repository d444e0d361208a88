# SPDX-License-Identifier: MIT
"""Generator of the enumerations and property groups: read and check -> plain model -> emit."""
