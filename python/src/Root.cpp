// SPDX-License-Identifier: MIT
#include "KWHistory.h"
#include "Nodes.h"

#include <pybind11/stl.h>

namespace
{
bool g_isEnding = false;

/** A call of the root's handle that answers a code. */
template <typename Work>
void AskRoot(py::handle self, py::handle value, Work&& work)
{
    const CHeld<IKWFunctionZEL> root = OpenGroup(self).Root();
    Ask(self, value, [&] { return work(*root.operator->()); });
}

/** A call of the root's handle that answers something else. */
template <typename Work>
auto FromRoot(py::handle self, Work&& work)
{
    const CHeld<IKWFunctionZEL> root = OpenGroup(self).Root();
    return Released([&] { return work(*root.operator->()); });
}

void AddCalls(py::class_<CGroup>& type)
{
    using t_Root = IKWFunctionZEL;
    type.def("_close",
             [](py::handle self)
             {
                 auto& group = Of<CGroup>(self.ptr());
                 LetGo(group.tree->root);
                 LetGo(group.node);
             })
        .def_property_readonly("_is_open", [](py::handle self)
                               { return Of<CGroup>(self.ptr()).tree->root != nullptr; })
        .def(
            "_save",
            [](py::handle self, const QString& name)
            { AskRoot(self, py::cast(name), [&](t_Root& root) { return root.Save(name); }); },
            py::arg("name"))
        .def(
            "_recall",
            [](py::handle self, const QString& name)
            { AskRoot(self, py::cast(name), [&](t_Root& root) { return root.Recall(name); }); },
            py::arg("name"))
        .def(
            "_preset",
            [](py::handle self, bool factory) {
                AskRoot(self, py::none(),
                        [&](t_Root& root) { return root.RunPresetSequence(factory); });
            },
            py::arg("factory"))
        .def(
            "_undo",
            [](py::handle self, int steps)
            { AskRoot(self, py::none(), [&](t_Root& root) { return KW_UndoSteps(root, steps); }); },
            py::arg("steps"))
        .def(
            "_redo",
            [](py::handle self, int steps)
            { AskRoot(self, py::none(), [&](t_Root& root) { return KW_RedoSteps(root, steps); }); },
            py::arg("steps"))
        .def("_history",
             [](py::handle self)
             {
                 const KW_History history =
                     FromRoot(self, [](t_Root& root) { return KW_GetHistory(root); });
                 return std::pair(history.undo, history.redo);
             })
        .def(
            "_enable_history",
            [](py::handle self, bool on)
            { FromRoot(self, [&](t_Root& root) { root.EnableHistory(on); }); },
            py::arg("on"))
        .def("_update_all", [](py::handle self)
             { FromRoot(self, [](t_Root& root) { root.UpdateAllMeasSettings(); }); })
        .def("_settings_folder", [](py::handle self)
             { return FromRoot(self, [](t_Root& root) { return root.GetSettingsFolder(); }); })
        .def(
            "_set_settings_folder",
            [](py::handle self, const QString& folder)
            { FromRoot(self, [&](t_Root& root) { root.SetSettingsFolder(folder); }); },
            py::arg("folder"))
        .def("_control_mode",
             [](py::handle self) {
                 return static_cast<int>(
                     FromRoot(self, [](t_Root& root) { return root.GetControlMode(); }));
             })
        .def(
            "_set_control_mode",
            [](py::handle self, int mode) {
                FromRoot(self, [&](t_Root& root)
                         { root.SetControlMode(static_cast<KW_CONTROL_MODE>(mode)); });
            },
            py::arg("mode"));
}
/** A bracket around calls of one thread. */
class CBracket
{
public:
    enum class e_Kind
    {
        Reading,
        Writing,
        Transaction,
    };

    CBracket(py::handle self, e_Kind kind, KW_CLIENT_ORIGIN origin, const QString& text)
        : m_root(OpenGroup(self).Root().Get()), m_kind(kind), m_thread(PyThread_get_thread_ident())
    {
        Released(
            [&]
            {
                switch (m_kind)
                {
                case e_Kind::Reading:
                    m_root->StartReadAccess();
                    break;
                case e_Kind::Writing:
                    m_root->StartWriteAccess(origin);
                    break;
                case e_Kind::Transaction:
                    m_root->StartTransaction(text);
                    break;
                }
            });
    }

    CBracket(const CBracket&) = default;
    CBracket& operator=(const CBracket&) = delete;
    ~CBracket() { LetGo(m_root); }

    void End(py::handle node, bool keep)
    {
        if (m_thread != PyThread_get_thread_ident())
        {
            throw std::runtime_error("a bracket ends in the thread that it began in");
        }
        const CHeld<IKWFunctionZEL> root(std::exchange(m_root, nullptr));
        if (!root)
        {
            return;
        }
        Ask(node, py::none(),
            [&]() -> KW_ACCEPTANCE
            {
                switch (m_kind)
                {
                case e_Kind::Reading:
                    root->EndReadAccess();
                    return eKW_ACC_OK;
                case e_Kind::Writing:
                    root->EndWriteAccess();
                    return eKW_ACC_OK;
                default:
                    return root->EndTransaction(keep);
                }
            });
    }

private:
    std::shared_ptr<IKWFunctionZEL> m_root;
    e_Kind m_kind;
    unsigned long m_thread;
};

void AddBrackets(py::module_& module, py::class_<CGroup>& group)
{
    py::class_<CBracket>(module, "Bracket", "An open bracket.")
        .def("end", &CBracket::End, py::arg("node"), py::arg("keep") = true);
    using e_Kind = CBracket::e_Kind;
    group
        .def("_start_reading", [](py::handle self)
             { return CBracket(self, e_Kind::Reading, eCLIENT_LOCAL, QString()); })
        .def(
            "_start_writing",
            [](py::handle self, bool remote) {
                return CBracket(self, e_Kind::Writing, remote ? eCLIENT_REMOTE : eCLIENT_LOCAL,
                                QString());
            },
            py::arg("remote"))
        .def(
            "_start_transaction",
            [](py::handle self, const QString& text)
            { return CBracket(self, e_Kind::Transaction, eCLIENT_LOCAL, text); },
            py::arg("text"));
}

py::object OpenRoot()
{
    // Nodes that somebody holds keep their tree: it is the same one then, and closed as one.
    static auto& present = *new std::weak_ptr<t_Tree>;
    auto tree = present.lock();
    // Held, as another thread may close it.
    const CHeld<IKWFunctionZEL> root(tree && tree->root ? tree->root
                                                        : Released([] { return GetZELRoot(); }));
    tree = present.lock(); // of another thread that was quicker
    if (!tree || !tree->root)
    {
        tree = std::make_shared<t_Tree>();
        tree->root = root.Get();
        present = tree;
    }
    const CHeld<IDbGroup> group = Released([&] { return root->GetDbObject(); });
    const CGroup seed(tree, group.Get());
    return py::handle(Registered().root)(py::cast(&seed, py::return_value_policy::reference));
}
} // namespace

bool IsEnding()
{
    return g_isEnding;
}

t_Tree::~t_Tree()
{
    LetGoUnlessEnding(root);
}

void AddRoot(py::module_& module, py::class_<CGroup>& group)
{
    AddBrackets(module, group);
    AddCalls(group);
    module.def("open_root", &OpenRoot, "The root of the tree, which is built when nobody has it.")
        .def(
            "_set_ending", [] { g_isEnding = true; }, "No tree is taken down from now on.");
}
