#pragma once

class MapDocument;

// The map an undo step works on, and the window showing it.
class StepTarget
{
public:
    virtual ~StepTarget() = default;
    virtual MapDocument& StepDocument() = 0;
    // A step changed the image size or the grid: the picture shown must be rebuilt.
    virtual void StepChangedView() = 0;
    // A step was undone or redone: whatever shows the map must catch up with it.
    virtual void StepApplied() {}
};
