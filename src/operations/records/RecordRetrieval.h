#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/ParallelWalk.h"
#include "operations/panels/WalkResult.h"

#include <optional>

struct OperationContext;

// Bringing the panels' stored passage records into AccessDatas: the record count, the download,
// the import that skips what is stored already, and, when asked, erasing the panel's memory once
// its rows are committed. The interactive run asks its questions; the scheduled run asks none
// and stops when cancel is requested.
class RecordRetrieval
{
public:
    struct Options
    {
        PanelTarget target = PanelTarget::Selected;
        // Erase each panel's record memory after its rows are committed.
        bool eraseAfter = false;
        // The daily run: no rights check, no questions, cancel flag tested before each panel.
        bool scheduled = false;
        // Every panel, this many at once, each on its own link; nothing is asked during the walk
        // and the failing panels are told together at the end.
        std::optional<ParallelWalk::Options> parallel;
    };

    struct Result
    {
        WalkResult walk;
        int downloaded = 0;
        int added = 0;
        int duplicates = 0;
        int panelsErased = 0;
        int panelsNotErased = 0; // asked to erase, left unerased to keep what it holds
        // Pieces of the downloads that were not stored as passages (kept apart).
        int keptBack = 0;
        // The failing panels of a parallel walk, with their reasons.
        QList<ParallelWalk::PanelFailure> failures;
    };

    // Downloads of one panel while its record count keeps moving, before it is left unerased.
    static constexpr int MaxFetchRounds = 3;

    static Result run(OperationContext& context, const Options& options);
};
