#pragma once

#include "windows/com/Object.h"

/// The classes of the object models that are called, by the names that they have there.
namespace windows::automation::classes {

// PowerPoint
inline com::Class Application{"Application"};
inline com::Class Presentations{"Presentations"};
inline com::Class Presentation{"Presentation"};
inline com::Class Tags{"Tags"};
inline com::Class Slides{"Slides"};
inline com::Class Slide{"Slide"};
inline com::Class SlideRange{"SlideRange"};
inline com::Class SlideShowTransition{"SlideShowTransition"};
inline com::Class SoundEffect{"SoundEffect"};
inline com::Class TimeLine{"TimeLine"};
inline com::Class Sequences{"Sequences"};
inline com::Class Sequence{"Sequence"};
inline com::Class Effect{"Effect"};
inline com::Class AnimationSettings{"AnimationSettings"};
inline com::Class Shapes{"Shapes"};
inline com::Class ShapeRange{"ShapeRange"};
inline com::Class GroupShapes{"GroupShapes"};
inline com::Class Shape{"Shape"};
inline com::Class TextFrame{"TextFrame"};
inline com::Class TextRange{"TextRange"};
inline com::Class LinkFormat{"LinkFormat"};
inline com::Class OLEFormat{"OLEFormat"};
inline com::Class Table{"Table"};
inline com::Class Rows{"Rows"};
inline com::Class Columns{"Columns"};
inline com::Class Cell{"Cell"};
inline com::Class SlideShowSettings{"SlideShowSettings"};
inline com::Class NamedSlideShows{"NamedSlideShows"};
inline com::Class NamedSlideShow{"NamedSlideShow"};
inline com::Class SlideShowWindow{"SlideShowWindow"};
inline com::Class SlideShowView{"SlideShowView"};
inline com::Class DocumentWindow{"DocumentWindow"};
inline com::Class Selection{"Selection"};
inline com::Class View{"View"};
inline com::Class Chart{"Chart"};
inline com::Class ChartData{"ChartData"};

// What add-ins are listed as
inline com::Class AddIn{"COMAddIn"};

}  // namespace windows::automation::classes
