#include "OwnVolume.h"

#include <Directory.h>
#include <fs_info.h>

#include <TempTree.h>
#include <cstring>
#include <linux/fuse.h>
#include <thread>
#include <vector>

namespace {

/// The least that a program must answer so that its file system can be opened.
class EmptyFuse
{
public:
    explicit EmptyFuse(const std::string& folder)
        : fDevice(open("/dev/fuse", O_RDWR | O_CLOEXEC)), fFolder(folder)
    {
        const std::string options =
            "fd=" + std::to_string(fDevice) + ",rootmode=40000,user_id=0,group_id=0";
        fIsMounted = fDevice >= 0 && mount("none", folder.c_str(), "fuse", MS_NOSUID | MS_NODEV,
                                           options.c_str()) == 0;
        if (fIsMounted) {
            fServer = std::thread([this] { Serve(); });
        }
    }
    ~EmptyFuse()
    {
        if (fIsMounted) {
            umount2(fFolder.c_str(), MNT_DETACH); // ends the reading
            fServer.join();
        }
        if (fDevice >= 0) {
            close(fDevice);
        }
    }

    bool IsMounted() const { return fIsMounted; }

private:
    void Serve() const
    {
        std::vector<char> request(size_t{256} * 1024);
        for (;;) {
            const ssize_t size = read(fDevice, request.data(), request.size());
            if (size < static_cast<ssize_t>(sizeof(fuse_in_header))) {
                return;
            }
            fuse_in_header header;
            std::memcpy(&header, request.data(), sizeof(header));
            Answer(header);
        }
    }

    void Answer(const fuse_in_header& header) const
    {
        switch (header.opcode) {
        case FUSE_INIT: {
            fuse_init_out out = {};
            out.major = FUSE_KERNEL_VERSION;
            out.minor = 31;
            out.max_write = 4096;
            Send(header, out);
            break;
        }
        case FUSE_GETATTR: {
            fuse_attr_out out = {};
            out.attr.ino = 1;
            out.attr.mode = S_IFDIR | 0755;
            out.attr.nlink = 2;
            Send(header, out);
            break;
        }
        case FUSE_OPENDIR:
            Send(header, fuse_open_out{});
            break;
        case FUSE_STATFS:
            Send(header, fuse_statfs_out{});
            break;
        case FUSE_FORGET:
        case FUSE_BATCH_FORGET:
            break;
        default:
            SendBytes(header, -ENOSYS, nullptr, 0);
        }
    }

    template<typename Out>
    void Send(const fuse_in_header& header, const Out& out) const
    {
        SendBytes(header, 0, &out, sizeof(out));
    }

    void SendBytes(const fuse_in_header& header, int error, const void* bytes, size_t size) const
    {
        fuse_out_header out = {static_cast<uint32_t>(sizeof(out) + size), error, header.unique};
        std::vector<char> whole(out.len);
        std::memcpy(whole.data(), &out, sizeof(out));
        if (size > 0) {
            std::memcpy(whole.data() + sizeof(out), bytes, size);
        }
        [[maybe_unused]] const ssize_t written = write(fDevice, whole.data(), whole.size());
    }

    const int fDevice;
    const std::string fFolder;
    bool fIsMounted = false;
    std::thread fServer;
};

} // namespace

TEST(MadeUpNumbersTest, AreThoseOfFileSystemsOfPrograms)
{
    const int device = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    if (device < 0) {
        GTEST_SKIP() << "this system has no file systems of programs";
    }
    close(device);
    TempTree tree;
    tree.MakeFolder("volume/served");
    OnVolume(tree.Path("volume"), "", [&tree] {
        tree.MakeFolder("volume/served");
        const EmptyFuse served(tree.Path("volume/served"));
        if (!Expect(served.IsMounted(), "mounted")) {
            return false;
        }
        const BDirectory folder(tree.Path("volume/served").c_str());
        return Expect(folder.InitCheck() == B_OK, "opened") &&
               Expect(!has_stable_nodes(folder), "its numbers are made up") &&
               Expect(has_stable_nodes(BDirectory(tree.Path("volume").c_str())), "those around");
    });
}
