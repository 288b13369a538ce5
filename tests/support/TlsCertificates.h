#pragma once

#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>

#include "tests/support/TemporaryFolder.h"

namespace corvane {

/// What a server shows of itself.
struct TlsIdentity {
    QSslCertificate certificate;
    QSslKey key;
};

/// An authority of a test's own, and the certificates that it signs. Not thread-safe.
class TlsCertificates {
public:
    /// Makes the authority's own certificate. Check `problem` afterwards.
    TlsCertificates() {
        isUsable_ = run({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes",
                         "-keyout", path("authority.key"), "-out", path("authority.pem"), "-subj",
                         "/CN=Test authority", "-days", "30"});
    }

    /// Why there are no certificates, or nothing.
    [[nodiscard]] std::optional<std::string> problem() const {
        return isUsable_ ? std::nullopt : std::optional<std::string>("openssl is not installed");
    }

    [[nodiscard]] QSslCertificate authority() const { return certificateIn("authority"); }

    /// A certificate for a server of this name that ends in `days`; signed by the authority.
    [[nodiscard]] TlsIdentity sign(const std::string& host, int days = 30) const {
        folder_.write("extensions", "subjectAltName=DNS:" + host);
        run({"req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout",
             path("server.key"), "-out", path("server.csr"), "-subj", "/CN=Server"});
        run({"x509", "-req", "-in", path("server.csr"), "-CA", path("authority.pem"), "-CAkey",
             path("authority.key"), "-CAcreateserial", "-extfile", path("extensions"), "-days",
             QString::number(days), "-out", path("server.pem")});
        return {certificateIn("server"), keyIn("server")};
    }

private:
    [[nodiscard]] QString path(const std::string& name) const {
        return QString::fromStdString((folder_ / name).string());
    }

    static bool run(const QStringList& arguments) {
        QProcess process;
        process.start(QStringLiteral("openssl"), arguments);
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
    }

    [[nodiscard]] QSslCertificate certificateIn(const std::string& name) const {
        return QSslCertificate(QByteArray::fromStdString(folder_.read(name + ".pem")));
    }

    [[nodiscard]] QSslKey keyIn(const std::string& name) const {
        return {QByteArray::fromStdString(folder_.read(name + ".key")), QSsl::Ec};
    }

    TemporaryFolder folder_;
    bool isUsable_ = false;
};

}  // namespace corvane
