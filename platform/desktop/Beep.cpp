#include "platform/desktop/Beep.h"

#include "platform/base/Environment.h"

#include <QApplication>

namespace platform {

void beep() {
  Environment::shared<const Bell>([] {
    return std::make_shared<const Bell>(Bell{&QApplication::beep});
  })->ring();
}

}  // namespace platform
