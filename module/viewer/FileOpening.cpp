#include "module/viewer/FileOpening.h"

#include "common/ErrorCodes.h"
#include "common/ErrorMessageHelper.h"
#include "common/Exception.h"
#include "module/viewer/ViewerText.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace {

using ca::CFileDocument;
using ca::Exception;

QByteArray ReadFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) {
        throw Exception(ca::kErrFileNotFound);
    }
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        throw Exception(ca::kErrDataFile);
    }
    constexpr auto kMost = static_cast<qint64>(CFileDocument::kMaxOctets);
    if (file.size() > kMost) {
        throw Exception(ca::kErrBadData);
    }
    return file.read(kMost + 1);  // it may have grown
}

}  // namespace

namespace ca {

OpenedFiles OpenFiles(const QStringList& paths) {
    OpenedFiles opened;
    std::size_t octets = 0;
    for (const QString& path : paths) {
        const QString name = QFileInfo(path).fileName();
        try {
            const QByteArray content = ReadFile(path);
            octets += static_cast<std::size_t>(content.size());
            if (opened.document.Files().size() == kMaxFiles || octets > kMaxFileOctets) {
                throw Exception(kErrBadData);
            }
            opened.document.Append(
                CFileDocument::OfFile({reinterpret_cast<const unsigned char*>(content.constData()),
                                       static_cast<std::size_t>(content.size())},
                                      name));
        } catch (const Exception& fault) {
            opened.code = opened.code != 0 ? opened.code : fault.errorCode;
            opened.faults +=
                ShownText(name.toStdWString()) + ": " +
                QString::fromStdWString(GetErrorMessage(fault.errorCode, /*prefix=*/false));
        }
    }
    return opened;
}

}  // namespace ca
