#pragma once

#include <SupportDefs.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>

/// What a person does next, by chance, and doing it. Thread: the test's own.
class Events
{
public:
    /// Goes on after so many events, as if it had done them.
    Events(uint32_t seed, int done);

    /// Does something; each takes the same count of numbers, whatever comes of it.
    void DoOne();

    /// Prints what was done last, oldest first; needs no memory, so also of a program that crashed.
    static void PrintLast();

private:
    struct Choice;
    static const Choice kChoices[];

    uint32 Draw(uint32 limit);
    uint32 Modifiers();
    void TypeLetter();
    void TypeDigit();
    void TypeSign();
    void TypeSteering();
    void TypeArrow();
    void TypeFunction();
    void TypeCommand();
    void TypeSomeText();
    void UseMenuKeys();
    void ClickSomewhere();
    void DragSomething();
    void TurnSomeWheel();
    void TypeNamed(char byte, const char* name, uint32 modifiers);

    std::mt19937 fDice;
    std::array<uint32, 12> fDrawn{}; // for the event
    size_t fUsed = 0;
};
