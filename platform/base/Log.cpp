#include "platform/base/Log.h"

#include "platform/base/Environment.h"

#include <cstdio>

namespace platform {
namespace {

void write(std::FILE* stream, const QString& line) {
  const QByteArray bytes = line.toUtf8() + '\n';
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
  std::fflush(stream);
}

std::shared_ptr<const LogRoads> roads() {
  return Environment::shared<const LogRoads>([] {
    return std::make_shared<const LogRoads>(LogRoads{[](const QString& line) { write(stderr, line); },
                                                     [](const QString& line) { write(stdout, line); }});
  });
}

}  // namespace

void log(const QString& line) {
  roads()->log(line);
}

void printLine(const QString& line) {
  roads()->print(line);
}

}  // namespace platform
