#pragma once

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QRect>
#include <QString>

#include <vector>

namespace e2e {

/// What a screen reader finds on a desktop with AssistiveTechnology::Listening: it asks all programs for
/// their trees of elements. Only elements that are showing count.
class ScreenReader {
 public:
  /// The name of a program on the bus, and the path of an object of its.
  struct Reference {
    QString program;
    QDBusObjectPath object;
  };
  struct Element {
    QString role;
    QString name;
    Reference reference;
  };

  /// `sessionBus`: the desktop's.
  explicit ScreenReader(const QString& sessionBus);
  ~ScreenReader();
  ScreenReader(const ScreenReader&) = delete;
  ScreenReader& operator=(const ScreenReader&) = delete;

  /// All that there are now, those inside others after them.
  [[nodiscard]] std::vector<Element> elements() const;
  /// Where on the screen the element of that name is; null if there is none.
  [[nodiscard]] QRect placeOf(const QString& name) const;

 private:
  [[nodiscard]] QVariant ask(const Reference& element, const QString& interface, const QString& method,
                             const QVariantList& arguments = {}) const;
  void collect(const Reference& parent, std::vector<Element>& found) const;

  QDBusConnection bus;
};

}  // namespace e2e
