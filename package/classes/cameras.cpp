#include "package/classes/class_lists.h"

namespace brimwave {

const ClassEntry& CameraLens() {
    static const ClassEntry entry = {
        .name = L"Lens of any camera",
        .rows{
            {L"film_width_mm", L"sensor_width"},
            {L"film_width", L"sensor_width"},
            {L"sensorWidth", L"sensor_width"},
            {L"focal_length_mm", L"focal_length"},
            {L"focal_length", L"focal_length"},
            {L"focalLength", L"focal_length"},
            {L"f_number", L"f_number"},
            {L"fStop", L"f_number"},
            {L"use_dof", L"dof_on"},
            {L"enableDof", L"dof_on"},
            {L"focus_distance", L"focus_distance"},
            {L"dofOverrideFocusDistance", L"focus_distance"},
            {L"specify_focus", L"focus_override"},
            {L"overrideFocusDistance", L"focus_override"},
            {L"zoom_factor", L"zoom"},
            {L"zoomFactor", L"zoom"},
            {L"autoVerticalTilt", L"auto_vertical_tilt"},
            {L"auto_vertical_tilt_correction", L"auto_vertical_tilt"},
            {L"lens_tilt_auto", L"auto_vertical_tilt"},
            {L"verticalTilt", L"vertical_tilt"},
            {L"vertical_tilt_correction", L"vertical_tilt"},
            {L"lens_tilt", L"vertical_tilt"},
            {L"horizontalTilt", L"horizontal_tilt"},
            {L"horizontal_tilt_correction", L"horizontal_tilt"},
            {L"lens_horTilt", L"horizontal_tilt"},
            {L"verticalShift", L"vertical_shift"},
            {L"vertical_shift", L"vertical_shift"},
            {L"horizontalShift", L"horizontal_shift"},
            {L"horizontal_shift", L"horizontal_shift"},
        },
    };
    return entry;
}

} // namespace brimwave
