// SPDX-License-Identifier: MIT
#include "PanelFiles.h"

#include "FilesFolder.h"
#include "ServiceLimits.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/rfc7230.hpp>

namespace http = boost::beast::http;

namespace
{
const t_PanelFile* Find(std::string_view target)
{
    const auto path = target.substr(0, target.find('?'));
    const auto files = NPanel::Bundle();
    const auto found =
        std::find_if(files.begin(), files.end(),
                     [path](const t_PanelFile& file) { return path == file.target; });
    return found != files.end() ? &*found : nullptr;
}

/** Whether a list such as "br;q=1.0, gzip;q=0.8" has gzip, and not only to refuse it. */
bool AcceptsZipped(std::string_view encodings)
{
    const http::ext_list list(boost::beast::string_view(encodings.data(), encodings.size()));
    return std::any_of(
        list.begin(), list.end(),
        [](const auto& encoding)
        {
            const auto isRefused = [](const auto& parameter)
            {
                return boost::beast::iequals(parameter.first, "q") &&
                       parameter.second.find_first_not_of("0.") == boost::beast::string_view::npos;
            };
            return boost::beast::iequals(encoding.first, "gzip") &&
                   std::none_of(encoding.second.begin(), encoding.second.end(), isRefused);
        });
}

bool HasTag(std::string_view tags, const std::string& tag)
{
    return tags == "*" || tags.find(tag) != std::string_view::npos;
}

std::string TextOf(std::span<const unsigned char> bytes)
{
    return {bytes.begin(), bytes.end()};
}

t_PanelAnswer FromBundle(const t_PanelFile& file, const t_PanelRequest& request)
{
    t_PanelAnswer answer;
    answer.type = file.type;
    answer.isZipped = AcceptsZipped(request.encodings);
    answer.tag = '"' + std::string(file.tag) + (answer.isZipped ? "-gzip\"" : "\"");
    if (HasTag(request.tags, answer.tag))
    {
        answer.status = 304;
        return answer;
    }
    answer.body = TextOf(answer.isZipped ? file.zipped : file.plain);
    return answer;
}

t_PanelAnswer FromFolder(const QString& folder, const t_PanelFile& file,
                         const t_PanelRequest& request)
{
    QString problem;
    const QString path = CFilesFolder(folder).PathOf(QLatin1String(file.name), {}, problem);
    QFile source(path);
    if (path.isEmpty() || !QFileInfo(path).isFile() || !source.open(QIODevice::ReadOnly) ||
        source.size() > NServiceLimits::kLargestPanelFile)
    {
        return {404, "", {}, false, {}};
    }
    const QByteArray content = source.read(NServiceLimits::kLargestPanelFile);
    const QByteArray tag = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
    t_PanelAnswer answer{200, file.type, '"' + tag.toStdString() + '"', false, {}};
    if (HasTag(request.tags, answer.tag))
    {
        answer.status = 304;
        return answer;
    }
    answer.body = content.toStdString();
    return answer;
}
} // namespace

bool CPanelFiles::Has(std::string_view target)
{
    return Find(target) != nullptr;
}

t_PanelAnswer CPanelFiles::Answer(const t_PanelRequest& request) const
{
    const t_PanelFile* const file = Find(request.target);
    if (file == nullptr)
    {
        return {404, "", {}, false, {}};
    }
    return m_folder.isEmpty() ? FromBundle(*file, request) : FromFolder(m_folder, *file, request);
}

const char* CPanelFiles::Policy()
{
    return "default-src 'self'; object-src 'none'; base-uri 'none'; form-action 'none'; "
           "frame-ancestors 'none'; require-trusted-types-for 'script'; trusted-types 'none'";
}
