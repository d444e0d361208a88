// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <span>
#include <string>
#include <string_view>

/** A file of the panel that is part of the program. */
struct t_PanelFile
{
    const char* target; ///< that requests name
    const char* name;   ///< in the folder that it was made from
    const char* type;   ///< of its content
    const char* tag;    ///< digest of its content
    std::span<const unsigned char> plain;
    std::span<const unsigned char> zipped; ///< by gzip
};

namespace NPanel
{
/** All files of the panel; written when the program is built. */
std::span<const t_PanelFile> Bundle();
} // namespace NPanel

/** What a browser says when it asks for a file. */
struct t_PanelRequest
{
    std::string_view target;
    std::string_view encodings; ///< that it accepts
    std::string_view tags;      ///< of what it has
};

/** A file for a browser, or why it gets none. */
struct t_PanelAnswer
{
    int status = 200; ///< 304: it has the file; 404: there is none
    const char* type = "";
    std::string tag; ///< with its quotes
    bool isZipped = false;
    std::string body;
};

/**
 * The panel: a page that shows the tree in a browser. Its files have no secrets, so that they are
 * given to everybody who may connect; what the page asks for is not. There are no others than
 * those of the bundle, wherever they are read from.
 */
class CPanelFiles
{
public:
    /** Files are read from the folder at each request, for those who change the panel; those of
        the program where it is empty. */
    explicit CPanelFiles(QString folder) : m_folder(std::move(folder)) {}

    /** Whether the target of a request, with or without a query, is one of the files. */
    static bool Has(std::string_view target);
    t_PanelAnswer Answer(const t_PanelRequest& request) const;

    /** What pages may do: load from here alone, no inline scripts or styles, in no other's frame,
        and texts never become markup. */
    static const char* Policy();

private:
    const QString m_folder;
};
