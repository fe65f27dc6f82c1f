#include <server/SelectionReader.h>

#include <OS.h>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <thread>

extern char** environ;

// Reading from real clients of a real X server, well-behaved and others.

namespace {

using State = kits::SelectionText::State;

/// An X server for the tests of this file, without a screen that anybody sees.
class XServer
{
public:
    XServer()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) {
            return;
        }
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], 3);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        // A number of its own: one that another server is just giving up would lose its socket with
        // that server's end.
        const std::string display = ":" + std::to_string(1'000 + getpid() % 50'000);
        const char* arguments[] = {"Xvfb", display.c_str(), "-displayfd", "3",   "-screen",
                                   "0",    "64x64x24",      "-nolisten",  "tcp", "-noreset",
                                   nullptr};
        if (posix_spawnp(&fProcess, "Xvfb", &actions, nullptr, const_cast<char**>(arguments),
                         environ) != 0) {
            fProcess = 0;
        }
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        const std::string number = ReadLine(ends[0]);
        close(ends[0]);
        if (!number.empty()) {
            fName = ":" + number;
            fKept.reset(xcb_connect(fName.c_str(), nullptr));
        }
    }
    ~XServer()
    {
        fKept.reset();
        if (fProcess != 0) {
            kill(fProcess, SIGTERM);
            waitpid(fProcess, nullptr, 0);
        }
    }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    bool IsInstalled() const { return fProcess != 0; }
    bool TakesConnections() const
    {
        return fKept != nullptr && xcb_connection_has_error(fKept.get()) == 0;
    }

    const char* Name() const { return fName.empty() ? nullptr : fName.c_str(); }

private:
    // The server writes its number and the line's end apart, and ends when nobody reads both.
    static std::string ReadLine(int descriptor)
    {
        std::string line;
        pollfd ready = {descriptor, POLLIN, 0};
        for (char byte = 0; poll(&ready, 1, 30'000) == 1 && read(descriptor, &byte, 1) == 1;) {
            if (byte == '\n') {
                return line;
            }
            line += byte;
        }
        return {};
    }

    pid_t fProcess = 0;
    std::string fName;
    // A server whose last client leaves begins anew, and takes nobody while it does.
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> fKept{nullptr, &xcb_disconnect};
};

constexpr size_t kLong = 1'300'000; // bytes; more than are read at once

enum class Manners {
    kGivesAtOnce,
    kGivesInParts,
    kNeverAnswers,
    kAnnouncesPartsOnly,
    kStopsAfterAPart,
    kTricklesForEver,
    kHasNoText,
    kHasOldTextOnly,
    kHasTypes,
};

/// A program that owns the clipboard and answers as its manners are.
class Owner
{
public:
    Owner(const char* display, Manners manners, std::map<std::string, std::string> types = {})
        : fConnection(xcb_connect(display, nullptr), &xcb_disconnect), fManners(manners),
          fTypes(std::move(types))
    {
        for (int i = 0; i < 1'000 && xcb_connection_has_error(Connection()) != 0; ++i) {
            snooze(5'000);
            fConnection.reset(xcb_connect(display, nullptr));
        }
        fWindow = xcb_generate_id(Connection());
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(Connection())).data->root;
        xcb_create_window(Connection(), XCB_COPY_FROM_PARENT, fWindow, root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(Connection(), fWindow, Atom("CLIPBOARD"), XCB_CURRENT_TIME);
        Atom("INCR"); // a round trip: it is the owner now
        fThread = std::thread([this] { Serve(); });
    }
    /// One that has these bytes of these types.
    Owner(const char* display, std::map<std::string, std::string> types)
        : Owner(display, Manners::kHasTypes, std::move(types))
    {
    }
    ~Owner()
    {
        fIsDone = true;
        fThread.join();
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

private:
    xcb_connection_t* Connection() const { return fConnection.get(); }

    xcb_atom_t Atom(const char* name)
    {
        const auto request =
            xcb_intern_atom(Connection(), 0, static_cast<uint16_t>(std::strlen(name)), name);
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(Connection(), request, nullptr);
        const xcb_atom_t atom = reply != nullptr ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
        std::free(reply);
        return atom;
    }

    std::string NameOf(xcb_atom_t atom)
    {
        const auto request = xcb_get_atom_name(Connection(), atom);
        xcb_get_atom_name_reply_t* reply =
            xcb_get_atom_name_reply(Connection(), request, nullptr);
        std::string name;
        if (reply != nullptr) {
            name.assign(xcb_get_atom_name_name(reply),
                        static_cast<size_t>(xcb_get_atom_name_name_length(reply)));
        }
        std::free(reply);
        return name;
    }

    void Serve()
    {
        while (!fIsDone) {
            xcb_generic_event_t* event = xcb_poll_for_event(Connection());
            if (event == nullptr) {
                Trickle();
                pollfd descriptor = {xcb_get_file_descriptor(Connection()), POLLIN, 0};
                poll(&descriptor, 1, 20);
                continue;
            }
            const int kind = event->response_type & 0x7f;
            if (kind == XCB_SELECTION_REQUEST) {
                Answer(*reinterpret_cast<xcb_selection_request_event_t*>(event));
            } else if (kind == XCB_PROPERTY_NOTIFY) {
                Taken(*reinterpret_cast<xcb_property_notify_event_t*>(event));
            }
            std::free(event);
        }
    }

    void Put(const std::string& bytes)
    {
        xcb_change_property(Connection(), XCB_PROP_MODE_REPLACE, fRequest.requestor,
                            fRequest.property, fRequest.target, 8,
                            static_cast<uint32_t>(bytes.size()), bytes.data());
        xcb_flush(Connection());
    }

    void Answer(const xcb_selection_request_event_t& request)
    {
        if (fManners == Manners::kNeverAnswers) {
            return;
        }
        fRequest = request;
        xcb_selection_notify_event_t answer = {};
        answer.response_type = XCB_SELECTION_NOTIFY;
        answer.requestor = request.requestor;
        answer.selection = request.selection;
        answer.target = request.target;
        answer.property = request.property;
        if (fManners == Manners::kHasNoText ||
            (fManners == Manners::kHasOldTextOnly && request.target != XCB_ATOM_STRING)) {
            answer.property = XCB_ATOM_NONE;
        } else if (fManners == Manners::kHasTypes) {
            const auto found = fTypes.find(NameOf(request.target));
            answer.property = found != fTypes.end() ? request.property : xcb_atom_t{XCB_ATOM_NONE};
            if (found != fTypes.end()) {
                Put(found->second);
            }
        } else if (fManners == Manners::kHasOldTextOnly) {
            Put("na\xefve");
        } else if (fManners == Manners::kGivesAtOnce) {
            Put(std::string(kLong, 'a') + "\xc3\xaf");
        } else {
            const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(Connection(), request.requestor, XCB_CW_EVENT_MASK,
                                         &events);
            const uint32_t size = 6;
            xcb_change_property(Connection(), XCB_PROP_MODE_REPLACE, request.requestor,
                                request.property, Atom("INCR"), 32, 1, &size);
        }
        xcb_send_event(Connection(), 0, request.requestor, 0,
                       reinterpret_cast<const char*>(&answer));
        xcb_flush(Connection());
    }

    void Taken(const xcb_property_notify_event_t& change)
    {
        if (change.atom != fRequest.property || change.state != XCB_PROPERTY_DELETE) {
            return;
        }
        const int part = fPartsTaken++;
        if (fManners == Manners::kGivesInParts) {
            Put(part == 0 ? "one " : part == 1 ? "two" : "");
        } else if (fManners == Manners::kStopsAfterAPart && part == 0) {
            Put("one ");
        } else if (fManners == Manners::kTricklesForEver) {
            fIsTrickleDue = true;
        }
    }

    void Trickle()
    {
        if (fIsTrickleDue) {
            fIsTrickleDue = false;
            Put("x");
        }
    }

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> fConnection;
    const Manners fManners;
    const std::map<std::string, std::string> fTypes;
    xcb_window_t fWindow = XCB_WINDOW_NONE;
    xcb_selection_request_event_t fRequest = {};
    int fPartsTaken = 0;
    bool fIsTrickleDue = false;
    std::atomic<bool> fIsDone{false};
    std::thread fThread;
};

class SelectionReaderTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { sServer = std::make_unique<XServer>(); }
    static void TearDownTestSuite() { sServer.reset(); }
    void SetUp() override
    {
        ASSERT_TRUE(sServer->IsInstalled()) << "no Xvfb here";
        ASSERT_TRUE(sServer->TakesConnections());
    }

    kits::SelectionText Read(const std::atomic<bool>* isCancelled = nullptr)
    {
        const bigtime_t start = system_time();
        kits::SelectionText text = kits::ReadSelection(
            sServer->Name(), kits::ClipboardKind::kClipboard, kLimits, isCancelled);
        fTook = system_time() - start;
        return text;
    }

    kits::SelectionFiles ReadFiles()
    {
        const bigtime_t start = system_time();
        kits::SelectionFiles files = kits::ReadSelectionFiles(
            sServer->Name(), kits::ClipboardKind::kClipboard, kLimits);
        fTook = system_time() - start;
        return files;
    }

    // As of old, but shorter: a machine that does much else may take half a second for anything.
    static constexpr kits::SelectionLimits kLimits = {1'000'000, 2'000'000};
    static constexpr bigtime_t kSlack = 900'000;
    static inline std::unique_ptr<XServer> sServer;

    bigtime_t fTook = 0;
};

TEST_F(SelectionReaderTest, ThereMayBeNone)
{
    EXPECT_EQ(Read().state, State::kNone);
}

TEST_F(SelectionReaderTest, TakesWhatIsGivenAtOnce)
{
    const Owner owner(sServer->Name(), Manners::kGivesAtOnce);

    const kits::SelectionText text = Read();

    EXPECT_EQ(text.state, State::kRead);
    EXPECT_EQ(text.bytes, std::string(kLong, 'a') + "\xc3\xaf");
}

TEST_F(SelectionReaderTest, TakesWhatIsGivenInParts)
{
    const Owner owner(sServer->Name(), Manners::kGivesInParts);

    const kits::SelectionText text = Read();

    EXPECT_EQ(text.state, State::kRead);
    EXPECT_EQ(text.bytes, "one two");
}

TEST_F(SelectionReaderTest, TakesOldText)
{
    const Owner owner(sServer->Name(), Manners::kHasOldTextOnly);

    const kits::SelectionText text = Read();

    EXPECT_EQ(text.state, State::kRead);
    EXPECT_EQ(text.bytes, "na\xc3\xafve");
}

TEST_F(SelectionReaderTest, PicturesAreNoText)
{
    const Owner owner(sServer->Name(), Manners::kHasNoText);

    EXPECT_EQ(Read().state, State::kNone);
}

TEST_F(SelectionReaderTest, GivesUpOnOneThatNeverAnswers)
{
    const Owner owner(sServer->Name(), Manners::kNeverAnswers);

    EXPECT_EQ(Read().state, State::kSilent);
    EXPECT_GE(fTook, kLimits.firstBytes);
    EXPECT_LT(fTook, kLimits.firstBytes + kSlack);
}

TEST_F(SelectionReaderTest, GivesUpOnOneThatOnlyAnnouncesText)
{
    const Owner owner(sServer->Name(), Manners::kAnnouncesPartsOnly);

    EXPECT_EQ(Read().state, State::kSilent);
    EXPECT_LT(fTook, kLimits.firstBytes + kSlack);
}

TEST_F(SelectionReaderTest, GivesUpOnOneThatStopsInTheMiddle)
{
    const Owner owner(sServer->Name(), Manners::kStopsAfterAPart);

    const kits::SelectionText text = Read();

    EXPECT_EQ(text.state, State::kSilent);
    EXPECT_EQ(text.bytes, "");
    EXPECT_LT(fTook, kLimits.all + kSlack);
}

TEST_F(SelectionReaderTest, GivesUpOnOneThatNeverEnds)
{
    const Owner owner(sServer->Name(), Manners::kTricklesForEver);

    EXPECT_EQ(Read().state, State::kSilent);
    EXPECT_GE(fTook, kLimits.all);
    EXPECT_LT(fTook, kLimits.all + kSlack);
}

TEST_F(SelectionReaderTest, EndsSoonWhenNobodyWaitsAnyMore)
{
    const Owner owner(sServer->Name(), Manners::kNeverAnswers);
    std::atomic<bool> isCancelled{true};

    EXPECT_EQ(Read(&isCancelled).state, State::kCancelled);
    EXPECT_LT(fTook, kLimits.firstBytes);
}

TEST_F(SelectionReaderTest, FilesMayBeMarkedInOneType)
{
    const Owner owner(sServer->Name(), {{"x-special/gnome-copied-files", "cut\nfile:///a"},
                                        {"text/uri-list", "file:///other\r\n"},
                                        {"UTF8_STRING", "/a"}});
    const kits::SelectionFiles files = ReadFiles();
    EXPECT_EQ(files.state, State::kRead);
    EXPECT_EQ(files.addresses, "cut\nfile:///a");
    EXPECT_TRUE(files.areCut);
    EXPECT_EQ(files.text, "");
}

TEST_F(SelectionReaderTest, FilesMayBeMarkedInATypeOfItsOwn)
{
    for (const char* mark : {"1", "0"}) {
        const Owner owner(sServer->Name(), {{"text/uri-list", "file:///a\r\n"},
                                            {"application/x-kde-cutselection", mark}});
        const kits::SelectionFiles files = ReadFiles();
        EXPECT_EQ(files.state, State::kRead);
        EXPECT_EQ(files.addresses, "file:///a\r\n");
        EXPECT_EQ(files.areCut, *mark == '1');
    }
}

TEST_F(SelectionReaderTest, FilesWithoutAMarkAreCopied)
{
    const Owner owner(sServer->Name(), {{"text/uri-list", "file:///a\r\n"}});
    const kits::SelectionFiles files = ReadFiles();
    EXPECT_EQ(files.addresses, "file:///a\r\n");
    EXPECT_FALSE(files.areCut);
}

TEST_F(SelectionReaderTest, WithoutFilesThereMayBeText)
{
    const Owner owner(sServer->Name(), {{"UTF8_STRING", "words"}});
    const kits::SelectionFiles files = ReadFiles();
    EXPECT_EQ(files.state, State::kRead);
    EXPECT_EQ(files.addresses, "");
    EXPECT_EQ(files.text, "words");
}

TEST_F(SelectionReaderTest, GivesUpOnFilesThatNeverCome)
{
    const Owner owner(sServer->Name(), Manners::kNeverAnswers);
    EXPECT_EQ(ReadFiles().state, State::kSilent);
    EXPECT_LT(fTook, kLimits.firstBytes + kSlack);
}

} // namespace
