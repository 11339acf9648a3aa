#pragma once

#include "app/editor/model/EditorModel.h"
#include "platform/base/MainQueue.h"

#include <functional>
#include <vector>

namespace sorrel {

/// Calls `refresh` at the event loop's next turn after changes of these fields of the document, and once
/// however many they are.
class ModelWatch {
 public:
  ModelWatch(EditorModel& model, std::vector<EditorModel::Field> fields, std::function<void()> refresh)
      : changes(model.observe([this, fields = std::move(fields), refresh = std::move(refresh)](auto field) {
          if (!due.isPending() && std::find(fields.begin(), fields.end(), field) != fields.end())
            due = platform::MainQueue::main().asyncAfter({}, refresh);
        })) {}

 private:
  platform::WorkItem due;
  const platform::Subscription changes;
};

}  // namespace sorrel
