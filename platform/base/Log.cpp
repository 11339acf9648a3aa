#include "platform/base/Log.h"

#include <QStringList>

#include <cstdio>

namespace platform {
namespace {

LogCapture* activeCapture = nullptr;

void write(std::FILE* stream, const QString& line) {
  const QByteArray bytes = line.toUtf8() + '\n';
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
  std::fflush(stream);
}

}  // namespace

void log(const QString& line) {
  if (activeCapture)
    activeCapture->logged << line;
  else
    write(stderr, line);
}

void printLine(const QString& line) {
  if (activeCapture)
    activeCapture->printed << line;
  else
    write(stdout, line);
}

LogCapture::LogCapture() : previous(activeCapture) {
  activeCapture = this;
}

LogCapture::~LogCapture() {
  activeCapture = previous;
}

}  // namespace platform
