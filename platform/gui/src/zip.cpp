#include "ranvel/platform/gui/zip.h"

#include <zip.h>

#include <filesystem>

#include "ranvel/platform/gui/wholefile.h"

namespace ranvel {

namespace fs = std::filesystem;

std::string FolderOf(const std::string& path) { return fs::path(path).parent_path().string(); }

namespace {

// The archive built in memory, so that what is written to the disk, and
// what is sent, are the same bytes.
bool ZipToMemory(const std::string& zipPath, const std::vector<std::string>& files, std::string& bytes,
                 std::string& error)
{
    zip_error_t e;
    zip_error_init(&e);
    zip_source_t* buffer = zip_source_buffer_create(nullptr, 0, 0, &e);
    if (!buffer) {
        error = "cannot make '" + zipPath + "': " + zip_error_strerror(&e);
        zip_error_fini(&e);
        return false;
    }
    // The buffer outlives the archive: the bytes are read from it after.
    zip_source_keep(buffer);
    struct Release {
        zip_source_t* s;
        ~Release() { zip_source_free(s); }
    } release{buffer};
    zip_t* archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &e);
    if (!archive) {
        error = "cannot make '" + zipPath + "': " + zip_error_strerror(&e);
        zip_error_fini(&e);
        return false;
    }
    zip_error_fini(&e);
    std::error_code ec;
    for (const std::string& file : files) {
        if (!fs::is_regular_file(file, ec)) {
            error = "cannot read '" + file + "'";
            zip_discard(archive);
            return false;
        }
        zip_source_t* source = zip_source_file(archive, file.c_str(), 0, -1);
        const std::string name = fs::path(file).filename().string();
        const zip_int64_t index = source ? zip_file_add(archive, name.c_str(), source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8) : -1;
        if (index < 0) {
            error = "cannot add '" + file + "': " + zip_strerror(archive);
            if (source) zip_source_free(source);
            zip_discard(archive);
            return false;
        }
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 9);
    }
    if (zip_close(archive) != 0) {
        error = "cannot make '" + zipPath + "': " + zip_strerror(archive);
        zip_discard(archive);
        return false;
    }
    zip_stat_t st;
    zip_stat_init(&st);
    if (zip_source_open(buffer) != 0) {
        error = "cannot make '" + zipPath + "': the archive is empty";
        return false;
    }
    bool read = zip_source_stat(buffer, &st) == 0 && (st.valid & ZIP_STAT_SIZE);
    if (read) {
        bytes.resize(static_cast<std::size_t>(st.size));
        read = zip_source_read(buffer, bytes.data(), st.size) == static_cast<zip_int64_t>(st.size);
    }
    zip_source_close(buffer);
    if (!read) error = "cannot make '" + zipPath + "': " + zip_error_strerror(zip_source_error(buffer));
    return read;
}

}  // namespace

bool ZipFiles(const std::string& zipPath, const std::vector<std::string>& files, std::string& error,
              std::string* written)
{
    std::string bytes;
    if (!ZipToMemory(zipPath, files, bytes, error)) return false;
    // Only its owner reads the archive: it carries the report.
    if (!WriteFileWhole(zipPath, bytes, 0600, error)) return false;
    if (written) *written = std::move(bytes);
    return true;
}

std::vector<ZipEntry> ReadZip(const std::string& zipPath, std::string& error)
{
    std::vector<ZipEntry> out;
    int code = 0;
    zip_t* archive = zip_open(zipPath.c_str(), ZIP_RDONLY, &code);
    if (!archive) {
        error = "cannot open '" + zipPath + "'";
        return out;
    }
    const zip_int64_t n = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < n; ++i) {
        zip_stat_t st;
        zip_stat_init(&st);
        if (zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &st) != 0) continue;
        ZipEntry e;
        e.name = st.name;
        e.deflated = st.comp_method == ZIP_CM_DEFLATE;
        zip_file_t* f = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
        if (!f) continue;
        e.bytes.resize(static_cast<std::size_t>(st.size));
        const zip_int64_t got = zip_fread(f, e.bytes.data(), st.size);
        zip_fclose(f);
        if (got != static_cast<zip_int64_t>(st.size)) {
            error = "cannot read '" + e.name + "' in '" + zipPath + "'";
            continue;
        }
        out.push_back(std::move(e));
    }
    zip_close(archive);
    return out;
}

}  // namespace ranvel
