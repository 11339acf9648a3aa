#include "app/editor/view/EditorTools.h"

#include "app/editor/view/BlurSection.h"
#include "app/editor/view/PenSection.h"
#include "app/editor/view/WatermarkSection.h"

#include <array>

namespace sorrel {
namespace {

template <typename Section>
QWidget* make(const SectionContext& context, QWidget* parent) {
  return new Section(context, parent);
}

using enum EditorModel::Tool;

constexpr std::array tools = {
    EditorTool{pen, "pencil.tip", "editor.tool.pen", make<PenSection>},
    EditorTool{blur, "drop.fill", "editor.tool.blur", make<BlurSection>},
    EditorTool{watermark, nullptr, "editor.tool.watermark", make<WatermarkSection>},
    EditorTool{crop, "crop", "editor.tool.crop", nullptr},
};

}  // namespace

std::span<const EditorTool> editorTools() {
  return tools;
}

int indexOf(EditorModel::Tool tool) {
  const auto found =
      std::find_if(tools.begin(), tools.end(), [tool](const EditorTool& one) { return one.tool == tool; });
  return static_cast<int>(found - tools.begin());
}

}  // namespace sorrel
