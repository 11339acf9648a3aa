#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QTcpServer>

#include <functional>

namespace testing_support {

struct HttpRequest {
  QByteArray path;                       // "/feed"
  QMap<QByteArray, QByteArray> headers;  // by name in lower case
};

/// A server on this machine, which runs in the test's event loop.
class HttpServer {
 public:
  /// What it sends, to the byte; nothing, and the connection stays open. Then the connection is closed,
  /// unless `staysOpen`.
  struct Answer {
    QByteArray bytes;
    bool staysOpen = false;
  };
  using Answering = std::function<Answer(const HttpRequest& request)>;

  explicit HttpServer(Answering answering);

  /// "http://127.0.0.1:1234" and the path.
  [[nodiscard]] QString address(const QString& path = {}) const;
  [[nodiscard]] const QList<HttpRequest>& requests() const { return received; }

  /// A whole answer: the status line and `headers` (lines with their ends), the length, the body.
  [[nodiscard]] static Answer answer(const QByteArray& body, const QByteArray& status = "200 OK",
                                     const QByteArray& headers = {});
  /// The same as a server does that keeps files, which knows of ranges.
  [[nodiscard]] static Answer file(const QByteArray& contents, const HttpRequest& request);

 private:
  void serve(QTcpSocket& socket);

  const Answering answering;
  QTcpServer server;
  QList<HttpRequest> received;
};

}  // namespace testing_support
