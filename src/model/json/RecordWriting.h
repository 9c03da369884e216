#pragma once

#include "model/CustomTag.h"
#include "model/json/JsonWriter.h"
#include "model/Project.h"
#include "model/ScriptTab.h"

namespace orlenta::model::json {

/// Each writes one record as an object. `lines` are all of the project's lines in order.
void write(JsonWriter &writer, const Project &project, const std::vector<const ProjectLine *> &lines);
/// `order` is the line's position across all tabs.
void write(JsonWriter &writer, const ProjectLine &line, std::int64_t order);
void write(JsonWriter &writer, const CustomTag &tag);
void write(JsonWriter &writer, const ScriptLine &line);
void write(JsonWriter &writer, const ScriptTab &tab);

} // namespace orlenta::model::json
