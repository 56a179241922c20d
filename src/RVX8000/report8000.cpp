#include "report8000.h"

#include "SwitcherData/framecodec.h"
#include "SwitcherData/protocol.h"
#include "audiochannels.h"
#include "audiomodekey.h"
#include "frontpanel8000.h"
#include "insetkeys.h"

#include <QByteArray>

void showSharedReport(const QByteArray &data, int (*wipeType)(uint8_t reported), FrontPanel8000 *front,
                      AudioModeKey *audioMode, AudioChannels *audio, InsetKeys *insets)
{
    using FrameCodec::byteAt;
    using namespace Protocol;
    front->showReport(data, wipeType);
    if (data.size() > State::AudioMode)
        audioMode->show(byteAt(data, State::AudioMode));
    audio->showReport(data);
    if (data.size() > State::Pip)
        insets->showPip(byteAt(data, State::Pip) != 0);
}
