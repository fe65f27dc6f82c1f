#include <Cursor.h>

namespace {

constexpr BCursor kSystemDefault(B_CURSOR_ID_SYSTEM_DEFAULT);
constexpr BCursor kIBeam(B_CURSOR_ID_I_BEAM);

} // namespace

const BCursor* const B_CURSOR_SYSTEM_DEFAULT = &kSystemDefault;
const BCursor* const B_CURSOR_I_BEAM = &kIBeam;
