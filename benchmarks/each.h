// The cases of each.cpp, an object file for each order.
#ifndef EACH_H
#define EACH_H

void addEach3();
void addEach4();
void addEach5();
void addEach6();

#endif
