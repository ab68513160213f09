#pragma once

#include <cstdint>
#include <string>

namespace qmrules::bench {

// Which paragraphs a paragraph performs: any, itself and those before it too; or some of the next ones, as in a program
// that runs.
enum class Performing : std::uint8_t { AnyParagraph, LaterParagraphs };

// A COBOL program of about this many lines, in fixed form, of the kind that shops keep: a fifth of it data, the rest
// paragraphs of some thirty lines with nested IF, EVALUATE, PERFORM in all forms, arithmetic, STRING, CALL, files,
// qualified and subscripted references, mostly to the areas that the paragraph is about, one line in eight a comment. A
// compiler accepts it. The same numbers give the
// same text.
std::string GenerateProgram(std::uint32_t lines, std::uint32_t seed, Performing performing = Performing::AnyParagraph);

}  // namespace qmrules::bench
