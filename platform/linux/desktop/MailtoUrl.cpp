#include "platform/linux/desktop/MailtoUrl.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <algorithm>

namespace corvane {

namespace {

/// In bytes; mail programs promise no more than some thousands.
constexpr std::size_t longestMailtoUrl = 2048;

bool hasControlCharacters(const QByteArray& bytes) {
    return std::any_of(bytes.begin(), bytes.end(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return code < 0x20 || code == 0x7f;
    });
}

}  // namespace

bool isMailtoUrl(const std::string& url) {
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("mailto:[A-Za-z0-9._+-]+@[A-Za-z0-9-]+(?:[.][A-Za-z0-9-]+)*"
                       "(?:[?]subject=((?:[A-Za-z0-9._~-]|%[0-9A-Fa-f]{2})*))?")));
    if (url.size() > longestMailtoUrl) {
        return false;
    }
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(QByteArray::fromStdString(url)));
    return match.hasMatch() &&
           !hasControlCharacters(QByteArray::fromPercentEncoding(match.captured(1).toLatin1()));
}

}  // namespace corvane
