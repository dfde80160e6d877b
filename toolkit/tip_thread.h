#pragma once

#include "foundation/nlists.h"
#include "foundation/nmutex.h"
#include "toolkit/nthread.h"

class NToolTip;

// The thread that serves all tips of the process, and exists while any tip is
// set.
//
// It only tries `tipLock`, once a turn, and skips what it can't do: so an owner
// may wait for the thread's end with the lock held. Whatever the thread does
// to a tip, message handlers included, it does with the lock held: so an owner
// that has the lock, and has the tip off the list and its window gone, may free
// the tip.

extern NPtrList tipList; // of NToolTip; of their owners
// Guards `tipList`, `tipThread` and the fields of all tips.
extern NMutex tipLock;
extern NThread tipThread;

inline constexpr DWORD TipPollMs = 50;

// For owners: holds the lock to the end of the scope. While it is taken,
// messages of the calling thread are dealt with, since the thread of the tips
// may be waiting for their answer: those that other threads send, and with
// `PostedToo` those in the queue as well.
class TipOwnerLock {
public:
    enum Messages { SentOnly, PostedToo };

    explicit TipOwnerLock(Messages messages);
    ~TipOwnerLock() { tipLock.Unlock(); }
    TipOwnerLock(const TipOwnerLock&) = delete;
    TipOwnerLock& operator=(const TipOwnerLock&) = delete;
};

// For owners with the lock held.
//
// Puts a tip on the list, once, with a thread that serves it.
void RegisterTip(NToolTip* tip);
// Takes it off. With the last tip the thread is ended and waited for.
void UnregisterTip(NToolTip* tip);

// The parts of the thread's turn. Each does nothing if the lock is taken.
void UpdateTips();
void DispatchTipMessages();
