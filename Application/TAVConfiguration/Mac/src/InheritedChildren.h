#pragma once

/// The children that the process had before its program began: what a shell ran in the background
/// before its `exec`, or what a module of PAM has left behind. They are not the program's own, and
/// the crash handler would take the end of one for a crash.
///
/// Main thread only.
class InheritedChildren {
public:
    /// Takes the children that there are now for inherited; where there are some, nothing is told
    /// of children until leaveUnheard(). No orphan of theirs becomes a child later.
    ///
    /// To be called before another thread or a child of the program's own is started.
    static void note();

    /// From now on nothing is heard of what becomes of an inherited child; of any other child the
    /// crash handler, which has to be installed, hears as before. Without inherited children
    /// nothing is changed, and neither is it by a second call.
    static void leaveUnheard();
};
