#include "MailSender.h"
#include <QDateTime>
#include <QEventLoop>
#include <QLocale>
#include <QThread>
#include <QUuid>
#include <curl/curl.h>
#include <memory>

namespace ql {

namespace {

// A header text outside ASCII goes as an RFC 2047 encoded word.
QByteArray headerText(const QString& text) {
    for (QChar c : text)
        if (c.unicode() > 126 || c.unicode() < 32)
            return "=?UTF-8?B?" + text.toUtf8().toBase64() + "?=";
    return text.toUtf8();
}

struct CurlDeleter {
    void operator()(CURL* c) const { curl_easy_cleanup(c); }
};

// curl's global start is not safe beside other threads, so it happens once, on the first caller's.
bool mailLibraryStarted() {
    static const bool started = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return started;
}

} // namespace

QString SendMail(const MailSettings& settings, const QString& password, const MailMessage& message) {
    if (!mailLibraryStarted()) return QStringLiteral("the mail library could not start.");
    if (message.to.trimmed().isEmpty() || !message.to.contains(u'@'))
        return QStringLiteral("there is no email address to send to.");

    std::unique_ptr<CURL, CurlDeleter> curl(curl_easy_init());
    if (!curl) return QStringLiteral("the mail library could not start.");
    CURL* c = curl.get();
    const bool tls = settings.security == QLatin1String("tls");
    const QByteArray url = QStringLiteral("%1://%2:%3")
                               .arg(tls ? QStringLiteral("smtps") : QStringLiteral("smtp"), settings.host)
                               .arg(settings.effectivePort())
                               .toUtf8();
    curl_easy_setopt(c, CURLOPT_URL, url.constData());
    // No signals for the timeouts: the send may run on a thread other than the main one.
    curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);
    if (settings.security == QLatin1String("starttls")) curl_easy_setopt(c, CURLOPT_USE_SSL, long(CURLUSESSL_ALL));
    const QByteArray user = settings.user.toUtf8();
    const QByteArray pass = password.toUtf8();
    if (!settings.user.isEmpty()) {
        curl_easy_setopt(c, CURLOPT_USERNAME, user.constData());
        curl_easy_setopt(c, CURLOPT_PASSWORD, pass.constData());
    }
    const QByteArray from = "<" + settings.from.trimmed().toUtf8() + ">";
    const QByteArray to = "<" + message.to.trimmed().toUtf8() + ">";
    curl_easy_setopt(c, CURLOPT_MAIL_FROM, from.constData());
    curl_slist* recipients = curl_slist_append(nullptr, to.constData());
    curl_easy_setopt(c, CURLOPT_MAIL_RCPT, recipients);
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, 20L);
    curl_easy_setopt(c, CURLOPT_TIMEOUT, 120L);

    curl_slist* headers = nullptr;
    const QByteArray date =
        "Date: " + QLocale::c().toString(QDateTime::currentDateTime(), QStringLiteral("ddd, dd MMM yyyy hh:mm:ss t")).toUtf8();
    const QList<QByteArray> lines{date, "From: " + from, "To: " + to, "Subject: " + headerText(message.subject),
                                  "Message-ID: <" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + "@" +
                                      settings.host.toUtf8() + ">"};
    for (const QByteArray& l : lines)
        headers = curl_slist_append(headers, l.constData());
    curl_easy_setopt(c, CURLOPT_HTTPHEADER, headers);

    curl_mime* mime = curl_mime_init(c);
    curl_mimepart* part = curl_mime_addpart(mime);
    const QByteArray body = message.body.toUtf8();
    curl_mime_data(part, body.constData(), size_t(body.size()));
    curl_mime_type(part, "text/plain; charset=utf-8");
    curl_mime_encoder(part, "quoted-printable");
    if (!message.attachment.isEmpty()) {
        part = curl_mime_addpart(mime);
        curl_mime_data(part, message.attachment.constData(), size_t(message.attachment.size()));
        curl_mime_type(part, "application/pdf");
        curl_mime_filename(part, message.attachmentName.toUtf8().constData());
        curl_mime_encoder(part, "base64");
    }
    curl_easy_setopt(c, CURLOPT_MIMEPOST, mime);

    char error[CURL_ERROR_SIZE] = {0};
    curl_easy_setopt(c, CURLOPT_ERRORBUFFER, error);
    const CURLcode rc = curl_easy_perform(c);
    curl_mime_free(mime);
    curl_slist_free_all(headers);
    curl_slist_free_all(recipients);
    if (rc == CURLE_OK) return QString();
    const QString why = error[0] ? QString::fromUtf8(error) : QString::fromUtf8(curl_easy_strerror(rc));
    return QStringLiteral("the mail server %1 did not take it (%2).").arg(settings.host, why);
}

QString SendMailAside(const MailSettings& settings, const QString& password, const MailMessage& message) {
    if (!mailLibraryStarted()) return QStringLiteral("the mail library could not start.");
    QString why;
    std::unique_ptr<QThread> worker(
        QThread::create([&why, &settings, &password, &message] { why = SendMail(settings, password, message); }));
    QEventLoop loop;
    // Queued to this thread, so the end is seen even when the send is over before the loop runs.
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    worker->start();
    loop.exec();
    worker->wait();
    return why;
}

} // namespace ql
