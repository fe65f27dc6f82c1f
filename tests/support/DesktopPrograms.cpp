#include "DesktopPrograms.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <thread>

namespace fs = std::filesystem;

namespace {

StartRecord ReadRecord(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    StartRecord record;
    for (size_t at = 0; at < text.size(); at = text.find('\0', at) + 1) {
        const std::string line = text.c_str() + at;
        const size_t equals = line.find('=');
        const std::string name = line.substr(0, equals);
        const std::string value = line.substr(equals + 1);
        if (name == "argument") {
            record.arguments.push_back(value);
        } else if (name == "variable") {
            record.variables.push_back(value);
        } else {
            record.facts[name] = value;
        }
    }
    return record;
}

} // namespace

bool StartRecord::HasVariable(const std::string& name) const
{
    return std::any_of(variables.begin(), variables.end(), [&](const std::string& variable) {
        return variable.starts_with(name + "=");
    });
}

DesktopPrograms& DesktopPrograms::Get()
{
    static DesktopPrograms programs;
    return programs;
}

DesktopPrograms::DesktopPrograms()
{
    fTree.MakeFolder("records");
    fTree.MakeFolder("share/applications");
    fTree.MakeFolder("etc");
    fTree.Link("share/mime", "/usr/share/mime");
    fTree.Link("share/icons", "/usr/share/icons");
    fTree.Write("broken-program", "#!/no/such/interpreter\n");
    fs::permissions(fTree.Path("broken-program"), fs::perms::owner_all);
    const std::string recorder = PROGRAM_RECORDER;
    AddProgram("text", recorder + " text %f", "");
    AddProgram("address", recorder + " address %U", "");
    AddProgram("bare", recorder + " bare", "Path=/usr\n");
    // Should it be started all the same, it does nothing.
    AddProgram("self", fs::read_symlink("/proc/self/exe").string() + " --gtest_list_tests %F", "");
    AddProgram("folders", recorder + " folders %F", "");
    AddProgram("broken", fTree.Path("broken-program") + " %f", "");
    AddProgram("missing", "/no/such/program %f", "");
    AddProgram("odd name", recorder + " odd %f", "");
    AddTypes();
    setenv("XDG_DATA_DIRS", fTree.Path("share").c_str(), 1);
    setenv("XDG_CONFIG_DIRS", fTree.Path("etc").c_str(), 1);
    setenv("RECORD_FOLDER", fTree.Path("records").c_str(), 1);
}

void DesktopPrograms::AddProgram(const std::string& name, const std::string& command,
                                 const std::string& more)
{
    fTree.Write("share/applications/" + name + ".desktop",
                "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + command + "\n" +
                    more);
}

void DesktopPrograms::AddTypes()
{
    fTree.Write("share/applications/mimeapps.list", "[Default Applications]\n"
                                                    "text/plain=text.desktop\n"
                                                    "application/pdf=address.desktop\n"
                                                    "image/png=bare.desktop\n"
                                                    "text/html=address.desktop\n"
                                                    "video/mp4=missing.desktop\n"
                                                    "audio/mpeg=broken.desktop\n"
                                                    "inode/directory=self.desktop\n");
    fTree.Write("share/applications/mimeinfo.cache",
                "[MIME Cache]\n"
                "inode/directory=self.desktop;folders.desktop;\n");
}

void DesktopPrograms::Clear()
{
    for (const auto& entry : fs::directory_iterator(fTree.Path("records"))) {
        fs::remove(entry.path());
    }
}

size_t DesktopPrograms::Count() const
{
    size_t count = 0;
    for (const auto& entry : fs::directory_iterator(fTree.Path("records"))) {
        count += entry.path().extension() == ".whole" ? 1 : 0;
    }
    return count;
}

std::vector<StartRecord> DesktopPrograms::Await(size_t count)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (Count() < count && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    std::vector<StartRecord> records;
    for (const auto& entry : fs::directory_iterator(fTree.Path("records"))) {
        if (entry.path().extension() == ".whole") {
            records.push_back(ReadRecord(entry.path()));
        }
    }
    return records;
}

void DesktopPrograms::CopyRecorder(const std::string& path)
{
    fs::copy_file(PROGRAM_RECORDER, path);
}
