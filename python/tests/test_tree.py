# SPDX-License-Identifier: MIT
"""Groups, containers, brackets, undo, files and polling."""

import inspect
import threading
import time

import pytest

import kwifunctionzel as kwi


def test_members_are_attributes(root):
    assert root.Horizontal is root.Horizontal and kwi.root() is root
    assert "Scale" in dir(root.Horizontal) and "wait" in dir(root.Horizontal)
    with pytest.raises(AttributeError, match="Scael"):
        root.Horizontal.Scael
    for name in ("Scael", "scale"):
        with pytest.raises(AttributeError):
            setattr(root.Horizontal, name, 1)
    with pytest.raises(TypeError):
        root.Horizontal = 1
    with pytest.raises(TypeError):
        del root.Horizontal.Scale
    with pytest.raises(TypeError):
        kwi.Group.__new__(kwi.Group).Horizontal
    for node in (root, root.Horizontal, root.Vertical.Channel, root.Preset):
        assert inspect.getdoc(node) == node.meaning
    assert "as a list" in kwi.Array.__doc__
    assert kwi.enums.KW_ONOFF.__doc__.splitlines()[2:] == ["OFF: Off.", "ON: On."]
    assert inspect.getdoc(root.Horizontal.node("Scale")).startswith("Time scale")


def test_nodes_are_found_by_path(root):
    for node in root.walk():
        assert root.node(node.path) == node, node
    for wrong in ("Nothing", "Horizontal/Nothing", "Vertical/Channel[9]", "Vertical/Channel[x]",
                  "Vertical/Channel[1", "Horizontal/Scale/Deeper", "Vertical/Channel[-1]"):
        with pytest.raises(KeyError):
            root.node(wrong)


def test_array_is_a_list(root):
    channels = root.Vertical.Channel
    assert len(channels) == 4 and channels[-1] is channels[3] and channels[0] in channels
    assert [one.path for one in channels] == [f"Vertical/Channel[{i}]" for i in range(4)]
    assert channels[1:3] == [channels[1], channels[2]]
    assert list(reversed(channels))[0] is channels[3] and channels.index(channels[2]) == 2
    for index in (4, -5):
        with pytest.raises(IndexError):
            channels[index]
    assert not channels.is_dynamic
    with pytest.raises(kwi.Refused) as caught:
        channels.append()
    assert caught.value.code is kwi.Code.FIXED_SIZE


def dynamic_array(root):
    return next(node for node in root.walk()
                if isinstance(node, kwi.Array) and node.is_dynamic and node.max_count > 3
                and node.is_available)


def test_array_grows_and_shrinks(root):
    array = dynamic_array(root)
    before = len(array)
    last = array.append()
    assert len(array) == before + 1 and array[-1] is last
    first = array.insert(0)
    assert array[0] is first and array[-1] == last
    array.active = 0
    assert array.active == 0
    array.remove(last)
    del array[0]
    assert len(array) == before
    root.undo()
    assert len(array) == before + 1


def test_removed_item_answers_and_refuses(root):
    labels = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    item = labels.insert("Motor")
    item.Identifier = 7
    del labels["Motor"]
    assert item.Identifier == 7
    with pytest.raises(kwi.Refused) as caught:
        item.Identifier = 8
    assert caught.value.code is kwi.Code.DETACHED


def test_map_is_a_dict(root):
    labels = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    motor, brake = labels.insert("Motor"), labels.insert("Brake")
    assert list(labels) == labels.keys() == ["Motor", "Brake"]
    assert labels["Motor"] is motor and labels.values() == [motor, brake]
    assert dict(labels.items()) == {"Motor": motor, "Brake": brake}
    assert "Motor" in labels and "Gear" not in labels and labels.get("Gear") is None
    with pytest.raises(KeyError):
        labels["Gear"]
    with pytest.raises(KeyError):
        del labels["Gear"]
    with pytest.raises(kwi.Refused) as caught:
        labels.insert("Motor")
    assert caught.value.code is kwi.Code.NAME_IN_USE
    key = labels.numeric_key("Motor")
    labels.rename("Motor", "Engine")
    assert labels.by_key(key) == motor and "Motor" not in labels
    motor.Identifier = 0x55
    assert labels.copy("Engine", "Second").Identifier == 0x55
    labels.active = "Second"
    assert labels.active == "Second"
    named = labels.insert()
    assert labels.keys()[-1] == named.path.rpartition("[")[2][:-1]
    for _ in range(len(labels)):
        root.undo()
    assert "Engine" in labels or "Motor" in labels


def test_transaction_is_one_step_and_taken_back_by_an_exception(root):
    scale = root.Horizontal.Scale
    with root.transaction("Slow sweep"):
        root.Horizontal.Scale = 1.0
        root.Horizontal.Position = 0.5
    assert root.undo_text == "Slow sweep" and root.history.undo[0] == "Slow sweep"
    root.undo()
    assert root.Horizontal.Scale == scale and root.redo_text == "Slow sweep"
    root.redo()
    assert root.Horizontal.Scale == 1.0
    root.undo()
    with pytest.raises(ZeroDivisionError):
        with root.transaction("Fails"):
            root.Horizontal.Scale = 1.0
            raise ZeroDivisionError
    assert root.Horizontal.Scale == scale
    root.enable_history(False)
    root.enable_history(True)
    with pytest.raises(kwi.Refused) as caught:
        root.undo()
    assert caught.value.code is kwi.Code.NOTHING_TO_DO


def test_lockout_lets_remote_writes_pass(root):
    root.control_mode = kwi.ControlMode.LOCAL_LOCKOUT
    with pytest.raises(kwi.Refused) as caught:
        root.Horizontal.Scale = 1.0
    assert caught.value.code is kwi.Code.NO_WRITE_ACCESS
    with root.writing(remote=True):
        root.Horizontal.Scale = 1.0
    assert root.Horizontal.Scale == 1.0 and root.control_mode is kwi.ControlMode.LOCAL_LOCKOUT
    root.control_mode = kwi.ControlMode.LOCAL


def test_save_and_recall(root, tmp_path):
    root.Horizontal.Scale = 0.5
    for name in ("settings.xml", "settings.csv"):
        root.save(tmp_path / name)
        root.preset()
        assert root.Horizontal.Scale != 0.5
        root.recall(tmp_path / name)
        assert root.Horizontal.Scale == 0.5
    with pytest.raises(kwi.Refused) as caught:
        root.recall(tmp_path / "none.xml")
    assert caught.value.code is kwi.Code.FILE_NOT_READABLE
    with pytest.raises(kwi.Refused):
        root.save(tmp_path)
    root.settings_folder = tmp_path
    assert root.settings_folder == str(tmp_path)


def test_each_poller_has_a_counter_of_its_own(root):
    one, other, elsewhere = root.changes(), root.changes(), root.Vertical.changes()
    assert not one.has_changed() and not one.wait(0)
    root.Horizontal.Scale = 0.5
    assert one.has_changed() and not one.has_changed()
    assert other.has_changed() and not elsewhere.has_changed()


def test_wait_sees_a_write_of_another_thread(root):
    timer = threading.Timer(0.05, lambda: setattr(root.Horizontal, "Scale", 0.5))
    timer.start()
    begin = time.monotonic()
    assert root.wait(10) and time.monotonic() - begin < 5
    timer.join()
    begin = time.monotonic()
    assert not root.wait(0.05) and time.monotonic() - begin >= 0.05


def test_actions_run(root):
    root.Horizontal.Scale = 0.5
    actions = [node for node in root.walk() if isinstance(node, kwi.Action)]
    assert actions and all(callable(action) for action in actions)
    root.Preset()
    assert root.Horizontal.Scale != 0.5


def test_couplings_name_what_moves(root):
    rows = root.Horizontal.couplings()
    assert any("Horizontal/ScaleGUI" in row.sources and row.steps for row in rows)
    assert all(row.group == "Horizontal" for row in rows)
