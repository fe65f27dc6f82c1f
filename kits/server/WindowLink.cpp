#include "WindowLink.h"

#include "DragRequest.h"
#include "FrontImage.h"
#include "NativeWindow.h"
#include "ServerState.h"
#include "WindowServer.h"

#include "app/LooperRegistry.h"

#include <atomic>
#include <utility>

namespace kits {

namespace {

int32 NextToken()
{
    static std::atomic<int32> last{0};
    return ++last;
}

} // namespace

WindowLink::WindowLink(BLooper* looper, const WindowShape& shape)
    : fToken(NextToken()), fFront(std::make_shared<FrontImage>()),
      fNews(std::make_shared<FrameNews>()),
      fNative(std::make_shared<NativeWindow>(fToken, LooperRegistry::FindLooper(looper), fFront,
                                             fNews, shape))
{
}

WindowLink::~WindowLink()
{
    WindowServer::Get().Call([native = fNative] { ServerState::Get().showing.Destroy(*native); });
}

void WindowLink::SetShape(const WindowShape& shape)
{
    WindowServer::Get().Post([native = fNative, shape] { native->SetShape(shape); });
}

void WindowLink::Show(const ShowRequest& request)
{
    WindowServer::Get().Call(
        [native = fNative, &request] { ServerState::Get().showing.Show(*native, request); });
}

void WindowLink::Hide()
{
    WindowServer::Get().Call([native = fNative] { ServerState::Get().showing.Hide(*native); });
}

void WindowLink::Activate()
{
    WindowServer::Get().Post([native = fNative] { ServerState::Get().order.Activate(*native); });
}

void WindowLink::Minimize(bool minimize)
{
    WindowServer::Get().Post([native = fNative, minimize] {
        native->Minimize(minimize);
        if (!minimize) {
            ServerState::Get().order.Activate(*native);
        }
    });
}

void WindowLink::Present()
{
    WindowServer::Get().Post([native = fNative] { native->Present(); });
}

void WindowLink::SetMouseCapture(bool on)
{
    WindowServer::Get().Post(
        [native = fNative, on] { ServerState::Get().input.SetCapture(*native, on); });
}

void WindowLink::SetCursor(PointerShape shape)
{
    WindowServer::Get().Post([native = fNative, shape] { native->SetCursor(shape); });
}

void WindowLink::Publish(std::shared_ptr<const Published> published)
{
    WindowServer::Get().Post(
        [native = fNative, published = std::move(published)] { native->Publish(published); });
}

void WindowLink::Drag(DragRequest request)
{
    WindowServer::Get().Post([request = std::move(request)]() mutable {
        ServerState::Get().drags.Start(std::move(request));
    });
}

float WindowLink::Scale() const
{
    return fNative->Scale();
}

} // namespace kits
