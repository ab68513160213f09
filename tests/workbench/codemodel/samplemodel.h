#pragma once

#include <string>

#include "workbench/codemodel/records.h"

namespace qmrules::test {

// A small model with an object of every kind that has something of its own to tell, over the text below.
struct SampleModel {
  workbench::codemodel::ModelData data;
  // Numbers of its nodes.
  workbench::codemodel::NodeId identification = 0, selectFile = 0, file = 0, record = 0, amount = 0, table = 0,
                               paragraph = 0, entry = 0, ifStatement = 0, condition = 0, amountRead = 0, literal = 0,
                               thenBlock = 0, move = 0, moveTarget = 0, elseBlock = 0, go = 0, goTarget = 0, call = 0,
                               search = 0, atEnd = 0, whenCondition = 0, whenBlock = 0, atEndBlock = 0, exit = 0;
};

// "pay.cbl", whose fifth row holds characters of two and of four bytes.
std::string SampleText();
SampleModel MakeSampleModel();

}  // namespace qmrules::test
