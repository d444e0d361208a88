# SPDX-License-Identifier: MIT
"""Values of all kinds, refusals and warnings."""

import math
import pickle
import warnings

import numpy
import pytest

import kwifunctionzel as kwi
from kwifunctionzel import _core, enums


def test_every_property_reads_back_what_it_says(root):
    kinds = set()
    for node in root.walk():
        if not isinstance(node, kwi.Property):
            continue
        kinds.add(type(node.value))
        parent = root.node(node.path.rpartition("/")[0])
        shown = getattr(parent, node.name)
        assert shown == node.value or shown != shown, node
        assert node.default is not None and isinstance(node.values, list), node
        assert isinstance(node.meaning, str) and node.availability in kwi.Availability
        if isinstance(node.value, (int, float)) and not isinstance(node.value, kwi.Enumeration):
            assert type(node.min) is type(node.max) is type(node.value), node
            assert float(node.text) == node.value or math.isnan(node.value), node
    assert {int, float, str, bytes} <= kinds


def test_number_takes_numbers_and_texts_with_units(root):
    horizontal = root.Horizontal
    horizontal.Scale = "2 ms/div"
    assert horizontal.Scale == 0.002
    horizontal.Scale = 1
    assert horizontal.Scale == 1.0 and isinstance(horizontal.Scale, float)
    for wrong in ("2 V", "fast", ""):
        with pytest.raises(kwi.RefusedValue) as refused:
            horizontal.Scale = wrong
        assert refused.value.code == kwi.Code.BAD_TEXT, wrong
    for wrong in (None, [1], object()):
        with pytest.raises(TypeError):
            horizontal.Scale = wrong
    assert horizontal.Scale == 1.0


def test_refusal_carries_code_limits_and_path(root):
    with pytest.raises(kwi.Refused) as caught:
        root.Horizontal.Position = 1e9
    refused = caught.value
    assert refused.code is kwi.Code.ABOVE_MAXIMUM and refused.text == "above the maximum"
    assert refused.path == "Horizontal/Position" and refused.value == 1e9
    assert refused.limits == (root.Horizontal.node("Position").min,
                              root.Horizontal.node("Position").max)
    assert isinstance(refused, ValueError) and "Horizontal/Position" in str(refused)
    again = pickle.loads(pickle.dumps(refused))
    assert (again.code, again.path, again.limits) == (refused.code, refused.path, refused.limits)


def test_refusal_of_a_name_carries_what_can_be_selected(root):
    with pytest.raises(kwi.RefusedValue) as caught:
        root.Trigger.Type = "nothing of this name"
    assert caught.value.code is kwi.Code.UNKNOWN_VALUE
    assert enums.KW_ZEL_TRIGGER_TYPE.EDGE in caught.value.values


def test_a_limited_value_warns_at_the_users_line(root):
    with pytest.warns(kwi.Limited, match="Horizontal/ReferencePoint") as caught:
        root.Horizontal.ReferencePoint = 12.3456789
    limited = [one for one in caught if one.category is kwi.Limited]
    assert limited[0].filename == __file__
    assert root.Horizontal.ReferencePoint != 12.3456789


def test_limits_of_whole_numbers_hold_before_the_type_wraps(root):
    averages = root.Horizontal.node("NumberOfAverages")
    for value, code in ((-1, kwi.Code.BELOW_MINIMUM), (2**32, kwi.Code.ABOVE_MAXIMUM),
                        (2**64 + 2, kwi.Code.ABOVE_MAXIMUM), (-(2**70), kwi.Code.BELOW_MINIMUM),
                        (2.5, kwi.Code.BAD_TEXT), (math.nan, kwi.Code.NOT_A_NUMBER),
                        (math.inf, kwi.Code.BAD_TEXT)):
        with pytest.raises(kwi.Refused) as caught:
            averages.value = value
        assert caught.value.code is code, value
    averages.value = 4.0
    assert root.Horizontal.NumberOfAverages == 4


def test_numbers_of_numpy_are_numbers(root):
    root.Horizontal.Scale = numpy.float64(2e-3)
    root.Horizontal.Scale = numpy.float32(0.5)
    root.Horizontal.NumberOfAverages = numpy.int64(16)
    root.Trigger.Type = numpy.int64(enums.KW_ZEL_TRIGGER_TYPE.RUNT)
    assert root.Horizontal.Scale == 0.5 and root.Horizontal.NumberOfAverages == 16
    assert root.Trigger.Type is enums.KW_ZEL_TRIGGER_TYPE.RUNT
    assert root.Vertical.Channel[numpy.int64(1)] is root.Vertical.Channel[1]
    for wrong in (1.0, numpy.float64(1.0), None):
        with pytest.raises(TypeError):
            root.Trigger.Type = wrong
    with pytest.raises(TypeError):
        root.Vertical.Channel["1"]


def test_64_bits_pass_whole(root):
    seen = 0
    for node in root.walk():
        if isinstance(node, kwi.Property) and node.type_name in ("uint64", "int64") \
                and node.is_result:
            for value in (node.max, node.max - 1, node.min):
                node.deliver(value)
                assert node.value == value, node
            seen += node.max > 2**53
    assert seen > 0


def test_nan_is_refused(root):
    with pytest.raises(kwi.Refused) as caught:
        root.Horizontal.Position = math.nan
    assert caught.value.code is kwi.Code.NOT_A_NUMBER


def test_enumeration_takes_members_names_and_numbers(root):
    kind = enums.KW_ZEL_TRIGGER_TYPE
    root.Trigger.Type = kind.RUNT
    assert root.Trigger.Type is kind.RUNT
    root.Trigger.Type = "edge"
    assert root.Trigger.Type is kind.EDGE
    root.Trigger.Type = int(kind.RUNT)
    assert root.Trigger.Type is kind.RUNT and root.Trigger.Type.display == "Runt"
    with pytest.raises(kwi.Refused) as caught:
        root.Trigger.Type = enums.KW_ONOFF.ON
    assert caught.value.code is kwi.Code.WRONG_KIND
    root.Vertical.Channel[1].Enabled = True
    assert root.Vertical.Channel[1].Enabled is enums.KW_ONOFF.ON


def test_enumerations_are_whole_and_can_be_pickled():
    for name in dir(enums):
        made = getattr(enums, name)
        assert [int(member) for member in made] == list(range(len(made))), name
        for member in made:
            assert member.name.isidentifier() and pickle.loads(pickle.dumps(member)) is member
            assert member.name in (member.serial, f"N{member.serial or int(member)}")
    assert enums.KW_CAN_BITRATE.N500_KBPS.number == 500e3
    with pytest.raises(AttributeError):
        enums.KW_NOTHING


def test_codes_are_those_of_the_library():
    assert all(_core.acceptance_text(code) == code.text for code in kwi.Code)
    assert "unknown" in _core.acceptance_text(len(kwi.Code))
    assert "unknown" not in kwi.Code(len(kwi.Code) - 1).text


def test_text_is_unicode(root):
    labels = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    name = "Motor ä€😀"
    item = labels.insert(name)
    assert labels.keys() == [name] and item.path.endswith(f"[{name}]")
    comment = item.node("Comment")
    for text in (name, "\x7fé", "日本語", "\U0001f600" * 3, ""):
        comment.value = text
        assert item.Comment == text and comment.text == text


def test_a_lone_surrogate_is_refused_and_harms_nobody(root):
    labels = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    with pytest.raises(kwi.Refused):
        labels.insert("\ud800")


def test_bytes_pass_whole(root):
    block = next(node for node in root.walk()
                 if isinstance(node, kwi.Property) and node.type_name == "blob"
                 and not node.is_result)
    block.value = bytearray(b"\x00\xff\x01")
    assert block.value == b"\x00\xff\x01"
    block.value = memoryview(b"abc")
    assert block.value == b"abc"
    with pytest.raises(TypeError):
        block.value = "text"


def test_secrets_are_in_no_message(root):
    secret = next(node for node in root.walk()
                  if isinstance(node, kwi.Property) and node.is_secret)
    with pytest.raises(kwi.Refused) as caught:
        secret.value = "x" * 1000
    assert "xxx" not in str(caught.value) and caught.value.value is None
    assert secret.text == "" or secret.text not in repr(secret)


def test_results_are_delivered_and_not_set(root):
    node = next(node for node in root.walk()
                if isinstance(node, kwi.Property) and node.is_result and not node.is_valid
                and node.type_name == "double")
    with pytest.raises(kwi.Refused) as caught:
        node.value = 1.0
    assert caught.value.code is kwi.Code.READ_ONLY
    node.deliver(min(max(1.0, node.min), node.max))
    assert node.is_valid
    with pytest.raises(kwi.Refused):
        root.Horizontal.node("Scale").deliver(1.0)
    choice = next(node for node in root.walk()
                  if isinstance(node, kwi.Property) and node.is_result
                  and isinstance(node.value, kwi.Enumeration))
    choice.deliver(type(choice.value)(1))
    assert choice.value == 1


def test_wishes_limits_steps_and_defaults(root):
    position = root.Horizontal.node("Position")
    with pytest.warns(kwi.Limited):
        position.set_limited(1e9)
    assert position.value == position.max
    position.reset()
    assert position.value == position.default
    scale = root.Horizontal.node("Scale")
    before = scale.value
    scale.step()
    assert scale.value > before
    scale.step(-1)
    assert scale.value == before
    assert scale.unit is enums.KW_UNIT(scale.unit) and scale.unit_text == "s/div"


def test_reports_are_warnings_of_the_call_that_made_them(root, tmp_path):
    name = tmp_path / "settings.csv"
    root.save(name)
    text = name.read_text(encoding="utf-8")
    name.write_text(text.replace("Horizontal", "Nowhere"), encoding="utf-8")
    with pytest.raises(kwi.Refused) as caught:
        root.recall(name)
    assert caught.value.code is kwi.Code.FILE_NOT_UNDERSTOOD and caught.value.reports
    kwi.seal(name)
    with warnings.catch_warnings(record=True) as caught_warnings:
        warnings.simplefilter("always")
        root.recall(name)
    assert {one.category for one in caught_warnings} == {kwi.Limited, kwi.Reported}
