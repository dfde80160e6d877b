// The end of the page. It stands apart from the calls that may bring it about:
// within one of them the compiler would take each inner call for the last.
#include "audiopage/audio_prop_page.h"

clAudioPropPage::Call::~Call() {
    // The last call still counts while the page goes, so that one that comes in
    // by then is not the outermost.
    if (page_.isReleased_ && page_.callsUnderWay_ == 1)
        delete &page_;
    else
        --page_.callsUnderWay_;
}

void clAudioPropPage::Release() {
    const Call call(*this);
    isReleased_ = true;
}
