#include "toolkit/ncall_count.h"

NCallCount::Call::Call(NCallCount* count) : count_(count) {
    if (count_)
        ++count_->underWay_;
}

NCallCount::Call::~Call() {
    if (!count_)
        return;
    // The last call still counts while the object goes, so that one that comes
    // in by then is not the outermost.
    if (count_->isReleased_ && count_->underWay_ == 1)
        count_->destroy_(count_->object_);
    else
        --count_->underWay_;
}

void NCallCount::Release() {
    const Call call(this);
    isReleased_ = true;
}
