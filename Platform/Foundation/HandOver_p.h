#pragma once

#include <QtGlobal>

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
extern "C" void AnnotateIgnoreWritesBegin(const char *file, int line);
extern "C" void AnnotateIgnoreWritesEnd(const char *file, int line);
#endif

namespace quib {

/// Qt's event loop and semaphores hand work over by means that the thread sanitizer does not see, Qt not
/// being instrumented. While a HandOver lives, the calling thread gives something to Qt; what came before is done where
/// takeOver() has been reached, and what Qt's own carriers of the block are made of is not looked at.
#if defined(__SANITIZE_THREAD__)
inline char s_handOverMark;
class HandOver
{
public:
    HandOver()
    {
        __tsan_release(&s_handOverMark);
        AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    }
    ~HandOver() { AnnotateIgnoreWritesEnd(__FILE__, __LINE__); }
    Q_DISABLE_COPY_MOVE(HandOver)
};
inline void takeOver()
{
    __tsan_acquire(&s_handOverMark);
}
#else
class HandOver
{
public:
    HandOver() {}
};
inline void takeOver() {}
#endif

} // namespace quib
