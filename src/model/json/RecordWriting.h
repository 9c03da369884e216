#pragma once

#include "model/CustomTag.h"
#include "model/json/JsonWriter.h"
#include "model/Project.h"

namespace orlenta::model::json {

/// Each writes one record as an object.
void write(JsonWriter &writer, const Project &project);
void write(JsonWriter &writer, const ProjectLine &line);
void write(JsonWriter &writer, const CustomTag &tag);

} // namespace orlenta::model::json
