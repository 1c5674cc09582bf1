// A module of plain C functions that is loaded at run time, and the table of its functions.
#pragma once

#include <QFileInfo>
#include <QLibrary>
#include <QString>

namespace wb
{

// `Table` holds a pointer to each function and gives them with their names: its ForEach(visit) calls
// visit(name, pointer).
template <typename Table>
class LoadedLibrary
{
public:
    // Loads the module of that name in `folder` (a native path). False when the file is missing, is no
    // library or lacks a function; the table is then as it was.
    bool Load(const QString &folder, const char *file)
    {
        // The exact file is named and looked for first: a library of that name elsewhere on the search path
        // is not ours.
        const QString path = folder + u'/' + QLatin1String(file);
        if (!QFileInfo::exists(path))
            return false;
        m_module.setFileName(path);
        if (!m_module.load())
            return false;

        Table functions;
        bool isComplete = true;
        functions.ForEach([&]<typename Function>(const char *name, Function &function) {
            function = reinterpret_cast<Function>(m_module.resolve(name));
            isComplete = isComplete && function != nullptr;
        });
        if (!isComplete) {
            m_module.unload();
            return false;
        }
        m_functions = functions;
        return true;
    }

    void Unload()
    {
        m_functions = {};
        if (m_module.isLoaded())
            m_module.unload();
    }

    bool IsLoaded() const { return m_module.isLoaded(); }

    // Only valid while it is loaded.
    const Table &Functions() const { return m_functions; }

private:
    QLibrary m_module;
    Table m_functions;
};

// Declares the members of such a table for an X(name) list of functions.
// NOLINTNEXTLINE(bugprone-macro-parentheses): the argument is a name being declared.
#define WB_LIBRARY_MEMBER(name) decltype(&::name) name = nullptr;
#define WB_LIBRARY_VISIT(name) visit(#name, name);
#define WB_LIBRARY_TABLE(functions)                                                                          \
    functions(WB_LIBRARY_MEMBER) template <typename Visit>                                                   \
    void ForEach(Visit visit)                                                                                \
    {                                                                                                        \
        functions(WB_LIBRARY_VISIT)                                                                          \
    }

} // namespace wb
