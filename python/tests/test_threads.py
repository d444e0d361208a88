# SPDX-License-Identifier: MIT
"""Threads on both sides of both locks, and what outlives what."""

import array
import gc
import os
import subprocess
import sys
import textwrap
import threading
import weakref

import pytest

import kwifunctionzel as kwi

TIMEOUT = 30


def run(code: str) -> subprocess.CompletedProcess[str]:
    """A process of its own: what hangs or crashes is a failed test, not the end of all."""
    return subprocess.run([sys.executable, "-X", "faulthandler", "-c", textwrap.dedent(code)],
                          capture_output=True, text=True, timeout=TIMEOUT, env=os.environ)


def test_brackets_and_writes_of_many_threads_do_not_lock_each_other():
    # One thread has the tree's lock and runs Python, others want the tree's and have Python's.
    done = run("""
        import threading, time
        import kwifunctionzel as kwi
        root = kwi.root()
        horizontal, stop = root.Horizontal, time.monotonic() + 3
        counts = {}
        def forever(name, work):
            n = 0
            while time.monotonic() < stop:
                work()
                n += 1
            counts[name] = n
        def bracket():
            with root.reading():
                left = horizontal.Left
                sum(range(1000))
                assert horizontal.Left == left
        def transaction():
            with root.transaction("Sweep"):
                for scale in (1e-3, 2e-3, 5e-3):
                    horizontal.Scale = scale
                    sum(range(1000))
        labels = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
        def container():
            try:
                name = labels.insert().path.rpartition("[")[2][:-1]
                del labels[name]
            except (KeyError, kwi.Refused):
                pass  # undone meanwhile
        def refusal():
            try:
                horizontal.Position = 1e9
            except kwi.Refused as refused:
                assert refused.limits
        works = dict(bracket=bracket, transaction=transaction, container=container,
                     refusal=refusal, read=lambda: horizontal.Scale,
                     text=lambda: horizontal.node("Scale").shown, undo=lambda: undo(),
                     changed=root.changes().has_changed)
        def undo():
            try:
                root.undo()
            except kwi.Refused:
                pass
        threads = [threading.Thread(target=forever, args=one) for one in works.items()]
        for thread in threads: thread.start()
        for thread in threads: thread.join()
        assert all(counts[name] > 0 for name in works), counts
        print("done")
        """)
    assert done.stdout == "done\n", done.stderr


def test_reads_of_numbers_do_not_wait_for_a_bracket():
    done = run("""
        import threading
        import kwifunctionzel as kwi
        root = kwi.root()
        inside, leave = threading.Event(), threading.Event()
        root.Horizontal.Scale  # a group's first member asks for all of them
        def hold():
            with root.writing():
                inside.set()
                leave.wait()
        thread = threading.Thread(target=hold)
        thread.start()
        inside.wait()
        root.Horizontal.Scale, root.Horizontal.AcquisitionMode, root.changes().has_changed()
        writes = threading.Thread(target=lambda: setattr(root.Horizontal, "Scale", 1.0))
        writes.start()
        writes.join(0.2)
        assert writes.is_alive() and root.Horizontal.Scale != 1.0
        leave.set()
        thread.join(); writes.join()
        assert root.Horizontal.Scale == 1.0
        print("done")
        """)
    assert done.stdout == "done\n", done.stderr


def test_interpreter_ends_while_threads_poll_write_and_hold_the_tree():
    for _ in range(5):
        done = run("""
            import threading, time
            import kwifunctionzel as kwi
            root = kwi.root()
            def poll():
                changes = root.changes()
                while True:
                    changes.wait(1)
            def write():
                while True:
                    root.Horizontal.Scale = "1 ms/div"
                    root.Horizontal.Scale = "2 ms/div"
            def hold():
                with root.transaction("For ever"):
                    while True:
                        root.Vertical.Channel[0].node("Scale").shown
            def texts():
                while True:
                    root.Horizontal.node("Scale").shown
            reader = kwi.streams.Stream().reader()
            acquisition = kwi.streams.Acquisition(root, 8 << 20)
            run = kwi.masks.MaskRun(root, acquisition)
            acquisition.set_test(run)
            curve = kwi.mathematics.MathematicsCurve(root)
            def deliver():
                while True:
                    acquisition.arm(); acquisition.deliver(); run.deliver()
            for work in (poll, write, write, texts, deliver, lambda: reader.wait(), hold):
                threading.Thread(target=work, daemon=True).start()
            time.sleep(0.2)
            print("end")
            """)
        assert (done.returncode, done.stdout) == (0, "end\n"), done.stderr


def test_nodes_keep_the_tree_until_it_is_closed():
    scale = kwi.root().Horizontal.node("Scale")
    scale.value = 1.0
    assert kwi.root().Horizontal.Scale == 1.0
    root = kwi.root()
    position = root.Horizontal.node("Position")
    root.close()
    assert scale.value == 1.0 and scale.path
    for refused_call in (lambda: scale.set(2.0), lambda: position.reset(), lambda: root.undo(),
                         lambda: root.changes(), lambda: root.save("x.xml")):
        with pytest.raises(kwi.Refused) as caught:
            refused_call()
        assert caught.value.code is kwi.Code.DETACHED
    assert root.Horizontal.Scale == 1.0 and "Root" in repr(type(root))
    with kwi.root() as fresh:
        assert fresh is not root and fresh.Horizontal.Scale != 1.0


def test_the_root_is_closed_while_others_read_it():
    done = run("""
        import threading, time
        import kwifunctionzel as kwi
        stop, counts = time.monotonic() + 2, []
        def read(work):
            n = 0
            while time.monotonic() < stop:
                try:
                    work(kwi.root())
                    n += 1
                except kwi.Refused as refused:
                    assert refused.code is kwi.Code.DETACHED
            counts.append(n)
        works = (lambda root: root.meaning, lambda root: root.couplings(),
                 lambda root: root.members(), lambda root: root.Horizontal.Scale)
        threads = [threading.Thread(target=read, args=(work,)) for work in works]
        for thread in threads: thread.start()
        while time.monotonic() < stop:
            kwi.root().close()
            time.sleep(0.02)
        for thread in threads: thread.join()
        print(len(counts))
        """)
    assert done.stdout == "4\n", done.stderr


def test_cycles_with_nodes_are_collected(root):
    class Holder:
        pass

    holder = Holder()
    holder.own, holder.channel, holder.root = holder, root.Vertical.Channel[1], root
    gone = weakref.ref(holder)
    del holder
    gc.collect()
    assert gone() is None


def test_a_bracket_ends_in_its_own_thread(root):
    bracket = root._start_reading()
    caught = []

    def end() -> None:
        try:
            bracket.end(root)
        except RuntimeError as error:
            caught.append(error)

    thread = threading.Thread(target=end)
    thread.start()
    thread.join()
    bracket.end(root)
    assert len(caught) == 1


def resident() -> int:
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * 4096


@pytest.mark.skipif("asan" in os.environ.get("LD_PRELOAD", ""), reason="counts bytes")
def test_a_million_calls_leave_nothing_behind(root):
    root.enable_history(False)
    horizontal, scale = root.Horizontal, root.Horizontal.node("Scale")
    labels = root.SerialBus.CANBusSettings.LabelListSettings.SerialBusLabelItem
    setup = root.Mask.MaskChannelSetup[0]
    points = array.array("h", range(1000))

    def calls(count: int) -> None:
        for i in range(count):
            horizontal.Scale
            horizontal.AcquisitionMode
            scale.value
            root.Vertical.Channel[i & 3].Scale
            scale.unit_text
            scale.min
            if i % 50 == 0:
                horizontal.Scale = "1 ms/div"
                scale.shown
                scale.values
                try:
                    horizontal.Position = 1e9
                except kwi.Refused:
                    pass
                with root.transaction("Scale"):
                    horizontal.Scale = 2e-3
            if i % 1000 == 0:
                labels.insert("Motor")
                del labels["Motor"]
                record = kwi.streams.make_record([kwi.streams.TraceInfo("C1")], [points])
                record = kwi.streams.from_bytes(record.to_bytes())
                curve = kwi.mathematics.compute(record, "C1 * 2").samples(0)
                mask = kwi.masks.around(record, 0, kwi.masks.MaskFrame(), 0.1, 0.5)
                mask.put(setup)
                kwi.masks.from_tree(setup).violations(record)
                del record, curve, mask

    calls(5_000)
    gc.collect()
    objects, before = len(gc.get_objects()), resident()
    calls(170_000)  # six reads each
    gc.collect()
    assert abs(len(gc.get_objects()) - objects) < 50
    assert resident() - before < 2 << 20
