// The request file of "muhurtha": the request form's fields as the form
// holds them, read and checked in full before any chart is made.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "ranvel/engine/request.h"
#include "ranvel/engine/zonenotes.h"

namespace ranvel::cli {

// One row of the catalogue: the category key and the Muhurtha's name.
struct CatalogueRow {
    std::string Category;
    std::string MuhuName;
};
// Every Muhurtha a request can name, in the catalogue's order.
std::vector<CatalogueRow> CatalogueRows();

// The request of a file. Every field is checked as the form's masks, pickers
// and lists would have it; what is wrong is refused with
// std::invalid_argument, one line a field, each naming it. The request's
// "settings" are checked too, and left for RunSettings.
MuhurthaRequest ReadRequest(const nlohmann::ordered_json& file);
// A place alone ({"Country", "City", "Lati", "Longi", "NS", "EW", "GMT"}),
// checked as a request's place is; where names it in a refusal of its kind.
RequestPlace ReadPlace(const nlohmann::ordered_json& place, const std::string& where);

}  // namespace ranvel::cli

#include <functional>
#include <memory>

#include "chart_input.h"
#include "ranvel/platform/sinks.h"

namespace ranvel::cli {

// A request file's run: the file read and checked in full at construction
// (its settings applied for the life of the object, the sinks installed),
// the search made by Search. A command checks what else it needs between
// the two, so that nothing is searched or written for a request it refuses.
// A command that takes only some kinds of request names the wrong kind in
// kindCheck, which sees the file before its fields are read: the request is
// refused for what it is rather than field by field.
class RequestRun {
public:
    using KindCheck = std::function<void(const nlohmann::ordered_json&)>;
    RequestRun(const std::string& path, bool json, const KindCheck& kindCheck = {});
    ~RequestRun();
    RequestRun(const RequestRun&) = delete;
    RequestRun& operator=(const RequestRun&) = delete;

    // Opens the data, makes the engine anew and generates.
    clsMuhurtha& Search();

    HeadlessMessageSink Messages;
    MuhurthaRequest Request;
    // The notes on the request's offsets, made before the search; the
    // search keeps the offsets the request gives.
    std::vector<ZoneNote> ZoneNotes;

private:
    HeadlessProgressSink progress_;
    std::unique_ptr<RunSettings> settings_;
};

}  // namespace ranvel::cli
