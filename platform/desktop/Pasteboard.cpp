#include "platform/desktop/Pasteboard.h"

#include "platform/base/Locations.h"
#include "platform/x11/X11Connection.h"

#include <QClipboard>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QProcess>

namespace platform::Pasteboard {
namespace {

constexpr std::chrono::seconds patience{3};  // with the process that is to keep the contents

const QString pngType = QStringLiteral("image/png");
const QString plainTextType = QStringLiteral("text/plain");
const QString toolkitImageType = QStringLiteral("application/x-qt-image");

/// Makes the picture, and the toolkit's image of it, only when a program asks for them.
class Contents : public QMimeData {
 public:
  void add(const PasteboardImage& image) { source = image.png; }
  void add(const QUrl& url) {
    const QByteArray address = url.toEncoded();
    setData(QStringLiteral("text/uri-list"), address + "\r\n");
    setData(QStringLiteral("x-special/gnome-copied-files"), "copy\n" + address);
  }

  [[nodiscard]] QStringList formats() const override {
    const QStringList others = QMimeData::formats();
    return source ? QStringList{pngType} + others + QStringList{toolkitImageType} : others;
  }

 protected:
  [[nodiscard]] QVariant retrieveData(const QString& type, QMetaType wanted) const override {
    if (source && type == pngType)
      return png();
    if (source && type == toolkitImageType)
      return QImage::fromData(png(), "PNG");
    return QMimeData::retrieveData(type, wanted);
  }

 private:
  [[nodiscard]] QByteArray png() const {
    if (!made)
      made = source();
    return *made;
  }

  std::function<QByteArray()> source;
  mutable std::optional<QByteArray> made;
};

/// The contents in the form in which the capture tool takes them: for each target its name, a blank, the
/// number of its bytes and a newline, then the bytes.
QByteArray forms(const QMimeData& contents) {
  QByteArray all;
  const auto add = [&all](const QString& target, const QByteArray& bytes) {
    all += target.toLatin1() + ' ' + QByteArray::number(bytes.size()) + '\n' + bytes;
  };
  for (const QString& type : contents.formats())
    if (type != toolkitImageType && !type.contains(u' '))
      add(type, contents.data(type));
  // The names by which older programs ask for a text that a field of the program's has put there.
  if (contents.formats().contains(plainTextType))
    for (const auto& name : {QStringLiteral("UTF8_STRING"), QStringLiteral("text/plain;charset=utf-8")})
      add(name, contents.text().toUtf8());
  return all;
}

}  // namespace

void clearContents() {
  QGuiApplication::clipboard()->clear();
}

void writeObjects(const std::vector<PasteboardObject>& objects) {
  auto contents = std::make_unique<Contents>();
  for (const PasteboardObject& object : objects)
    std::visit([&](const auto& value) { contents->add(value); }, object);
  QGuiApplication::clipboard()->setMimeData(contents.release());
}

void handOver() {
  QGuiApplication::processEvents();  // among them that another program has taken the clipboard
  QClipboard* const clipboard = QGuiApplication::clipboard();
  if (!x11Connection() || !clipboard->ownsClipboard())
    return;
  QProcess keeper;
  keeper.setProcessChannelMode(QProcess::ForwardedChannels);
  keeper.start(Locations::ownTool(QStringLiteral("screencapture")), {QStringLiteral("--keep-clipboard")});
  keeper.write(forms(*clipboard->mimeData()));
  keeper.closeWriteChannel();
  if (!keeper.waitForFinished(static_cast<int>(std::chrono::milliseconds(patience).count())))
    return;
  // As long as the toolkit takes the contents for its own, it offers them to a clipboard manager at its end,
  // and waits for an answer from one that hangs.
  const QDeadlineTimer deadline(patience);
  while (keeper.exitCode() == 0 && clipboard->ownsClipboard() && !deadline.hasExpired())
    QGuiApplication::processEvents();
}

}  // namespace platform::Pasteboard
