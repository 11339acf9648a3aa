#include "app/shell/SorrelApp.h"

int main(int argc, char** argv) {
  return sorrel::SorrelApp(argc, argv).run();
}
