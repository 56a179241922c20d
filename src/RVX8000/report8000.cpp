#include "report8000.h"

#include "SwitcherData/unitstate.h"
#include "audiochannels.h"
#include "audiomodekey.h"
#include "frontpanel8000.h"
#include "insetkeys.h"

void showSharedReport(const UnitState &s, FrontPanel8000 *front, AudioModeKey *audioMode,
                      AudioChannels *audio, InsetKeys *insets)
{
    front->showReport(s);
    if (s.has(UnitState::AudioMode))
        audioMode->show(uint8_t(s.audioMode()));
    audio->showReport(s);
    if (s.has(UnitState::Pip))
        insets->showPip(s.pip());
}
