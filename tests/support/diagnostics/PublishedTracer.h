#pragma once

#include "TemporaryFolder.h"
#include "Tracer.h"

#include <cstdio>
#include <limits>
#include <regex>
#include <string>
#include <string_view>

#include <unistd.h>

/// An active tracer that is published for one test: every call and message of every thread is
/// written at once to a file of its own, the test's own thread under the name "test".
class PublishedTracer {
public:
    PublishedTracer()
    {
        m_tracer.setSynchronous(true);
        // lines() reads the first file of the ring alone.
        m_tracer.setMaxLinesPerFile(std::numeric_limits<int>::max());
        m_tracer.setMsgTypeMask(0x1FF);
        m_tracer.TraceTheThread("*");
        m_tracer.TraceTheCall("*");
        m_tracer.SetFileName(m_folder.file("trace"));
        Tracer::SetInstance(&m_tracer);
        m_tracer.BeginningOfThread("test");
        m_tracer.setActive(true);
    }

    Tracer* operator->() { return &m_tracer; }

    /// The one that guards the tracer.
    KFMutex& mutex() { return m_tracer.m_mutex; }

    const TemporaryFolder& folder() const { return m_folder; }

    /// The lines that were written, with "<id>" for the padded id of the test's own thread.
    std::string lines() const
    {
        char id[16];
        std::snprintf(id, sizeof(id), "th_%-5d]", gettid());
        std::string text = m_folder.read("trace_0.txt");
        for (std::size_t at = text.find(id); at != std::string::npos; at = text.find(id, at))
            text.replace(at, std::string_view(id).size(), "<id>]");
        return text;
    }

    /// The lines that were written, with "<id>" for the padded id of any thread.
    std::string linesOfAllThreads() const
    {
        return std::regex_replace(
            m_folder.read("trace_0.txt"), std::regex("\\[th_[0-9]+ *\\]"), "[<id>]");
    }

private:
    class HeldTracer : public Tracer {
    public:
        using Tracer::m_mutex;
    };

    TemporaryFolder m_folder;
    HeldTracer m_tracer;
};
