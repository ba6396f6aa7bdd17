#pragma once
// The walk that hands one operation to the processor for each photo the
// "Process:" boxes choose: the current photo alone, or every photo of the
// list that "All" or its colour marker picks. The Image Operations window
// and the gallery command both run it. User-interface thread only (turns
// and mirrors of many photos run on a photo pool meanwhile).

#include <vector>

#include "imageops/operation.h"
#include "imageops/photo_pool.h"
#include "platform/ui_text.h"

namespace tivox {

class CImageProcessor;
class IEditHost;
class IPrompt;
class IStepProgress;

// The state of the "Process:" check boxes.
struct ProcessScope {
    bool current = true;
    bool all = false;
    bool red = false;
    bool green = false;
    bool blue = false;

    // Whether a photo with this marker (0 none, 1 red, 2 green, 3 blue) is
    // chosen in a walk over the list.
    bool Chooses(int marker) const {
        return all || (red && marker == 1) || (green && marker == 2) || (blue && marker == 3);
    }
};

// What one walk did.
struct PassResult {
    bool cancelled = false;       // the user stopped it between two photos
    std::vector<UiText> failures; // the processor's error text, per failed photo
};

// How many photos the boxes choose: the current one (if any), or those of
// the list that "All" or their colour picks.
int CountChosen(const ProcessScope& scope, IEditHost& window);

// Runs `operation` on the chosen photos. A walk over the list counts each
// chosen photo as one step of `progress` and stops between two photos when
// the user cancels; a failure does not stop it. Turns and mirrors of a walk
// run on a PhotoPool of `threads`, so a cancel leaves the photos in hand
// done. Last the window is repainted.
PassResult RunPass(const COperation& operation, const ProcessScope& scope,
                   CImageProcessor& processor, IEditHost& window, IStepProgress& progress,
                   int threads = PhotoPool::DefaultThreads());

// Tells all failures of a command in one message, caption "Error": a single
// one as it is, several as a list (the same text once). Nothing without any.
// `translate` turns the listed texts into the user's language.
void ReportFailures(const std::vector<UiText>& failures, IPrompt& prompt,
                    const Translator& translate = {});

// RunPass, then ReportFailures. Gives the number of failures.
int ApplyOperation(const COperation& operation, const ProcessScope& scope,
                   CImageProcessor& processor, IEditHost& window, IPrompt& prompt,
                   IStepProgress& progress, const Translator& translate = {});

} // namespace tivox
