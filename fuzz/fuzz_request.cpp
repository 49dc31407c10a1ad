// The request file of "ranvel-cli muhurtha": any bytes as the file named by
// --request, read the way the command reads it before it does anything
// else: the JSON of the file, the request with every field checked, and the
// request's settings installed for the run. The scratch <app> holds the
// shipped catalogue, which a request names its Muhurtha from. Nothing here
// makes a chart or searches.
#include <cstdint>
#include <stdexcept>
#include <string>

#include "chart_input.h"
#include "harness.h"
#include "person_json.h"
#include "request_file.h"

using namespace ranvel;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::Init();
    fuzz::ScratchCatalogue();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string path = fuzz::WriteScratchFile("request.json", data, size);
    try {
        const nlohmann::ordered_json file = cli::ReadJsonFile(path);
        const MuhurthaRequest request = cli::ReadRequest(file);
        cli::RunSettings settings(file.contains("settings") ? file["settings"] : nlohmann::ordered_json());
    } catch (const std::invalid_argument&) {
        // A bad request, refused with a message that names the field.
    } catch (const std::exception&) {
        // What the command line reports as a run-time error.
    }
    return 0;
}
