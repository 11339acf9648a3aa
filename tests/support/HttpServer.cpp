#include "tests/support/HttpServer.h"

#include <QTcpSocket>

#include <stdexcept>

namespace testing_support {
namespace {

HttpRequest parse(const QByteArray& head) {
  QList<QByteArray> lines = head.split('\n');
  HttpRequest request{lines.takeFirst().split(' ').value(1), {}};
  for (const QByteArray& line : lines)
    if (const qsizetype colon = line.indexOf(':'); colon > 0)
      request.headers.insert(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
  return request;
}

}  // namespace

HttpServer::HttpServer(Answering answering) : answering(std::move(answering)) {
  if (!server.listen(QHostAddress::LocalHost))
    throw std::runtime_error("no port to listen at");
  QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
    while (QTcpSocket* const socket = server.nextPendingConnection())
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { serve(*socket); });
  });
}

QString HttpServer::address(const QString& path) const {
  return QStringLiteral("http://127.0.0.1:%1%2").arg(server.serverPort()).arg(path);
}

void HttpServer::serve(QTcpSocket& socket) {
  const QByteArray end = "\r\n\r\n";
  const QByteArray head = socket.peek(1 << 16);
  if (!head.contains(end))
    return;
  socket.readAll();
  received.append(parse(head));
  const Answer answer = answering(received.last());
  socket.write(answer.bytes);
  if (!answer.staysOpen)
    socket.disconnectFromHost();
}

HttpServer::Answer HttpServer::answer(const QByteArray& body, const QByteArray& status,
                                      const QByteArray& headers) {
  return {"HTTP/1.1 " + status + "\r\n" + headers + "Content-Length: " + QByteArray::number(body.size()) +
          "\r\n\r\n" + body};
}

HttpServer::Answer HttpServer::file(const QByteArray& contents, const HttpRequest& request) {
  const QByteArray range = request.headers.value("range");
  if (range.isEmpty())
    return answer(contents);
  const qsizetype from = range.sliced(range.indexOf('=') + 1).chopped(1).toLongLong();
  const QByteArray size = QByteArray::number(contents.size());
  if (from >= contents.size())
    return answer({}, "416 Range Not Satisfiable", "Content-Range: bytes */" + size + "\r\n");
  return answer(contents.sliced(from), "206 Partial Content",
                "Content-Range: bytes " + QByteArray::number(from) + '-' +
                    QByteArray::number(contents.size() - 1) + '/' + size + "\r\n");
}

}  // namespace testing_support
