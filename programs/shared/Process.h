// What each program does before anything else.
#pragma once

namespace fexora::program {

// The first call of main. A limit on the size of files then fails the write, which is reported,
// instead of ending the program. Of the descriptors 0 to 2 those that are closed are taken by ones
// that can be neither read nor written, so that no file or socket opened later gets their number
// and what is printed; whoever prints is told as if they were closed.
void prepareProcess();

}  // namespace fexora::program
