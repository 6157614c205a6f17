#include "real.hpp"

#include "number/index.hpp"

#include <vector>

namespace tfmgen::plan {

namespace {

// ---- Powers of primes

const PlanPtr two = direct(2);
const PlanPtr three = direct(3);
const PlanPtr four = powerOfTwo(4);
const PlanPtr five = direct(5);
const PlanPtr seven = direct(7);
const PlanPtr eight = powerOfTwo(8);
const PlanPtr nine = cooleyTukey(three, three);
const PlanPtr nineMerged = cooleyTukey(three, three, Merge::yes);
const PlanPtr nineSplit = byData(nineMerged, nine);
const PlanPtr eleven = direct(11);
const PlanPtr sixteen = powerOfTwo(16);
const PlanPtr twentyFive = cooleyTukey(five, five);
const PlanPtr twentySevenMerged = cooleyTukey(three, nineSplit, Merge::yes);

// ---- Composites that occur as stages

const PlanPtr six = goodThomas(three, two);
const PlanPtr fifteen = goodThomas(five, three);
const PlanPtr twentyOne = goodThomas(seven, three);

PlanPtr twice(const PlanPtr& odd) {
  return goodThomas(two, odd);
}

// The pairs of 2m points with m odd, and m before 2 in both halves, with twiddles in the odd one.
PlanPtr pairsOver(const PlanPtr& m, Merge mergeSine = Merge::no) {
  return pairs(goodThomas(m, two), oddCooleyTukey(m, mergeSine));
}

// ---- Primes by convolution. Another primitive root permutes the same constants and changes rounding and signs; where
// the root is not the smallest, it is one that leaves fewer imaginary parts to negate.

const PlanPtr rader11 = rader(11, 6, goodThomas(five, two), goodThomas(five, two));

PlanPtr thirteenOver(int root) {
  return rader(13, root, goodThomas(three, four), pairsOver(three, Merge::yes));
}
const PlanPtr thirteen = thirteenOver(7);
const PlanPtr thirteenOnComplex = rader(13, 7, goodThomas(three, four), pairsOver(three));
const PlanPtr thirteenHartley = rader(13, 7, cooleyTukey(three, four), goodThomas(four, three), Merge::no, Merge::yes);
const PlanPtr thirteenInHartley53 =
    rader(13, 7, goodThomas(three, four), pairs(twice(three), oddCooleyTukey(three)), Merge::no, Merge::yes);
const PlanPtr thirteenInverse =
    rader(13, 2, goodThomas(four, three), pairs(cooleyTukey(three, two), oddCooleyTukey(three)), Merge::yes);
const PlanPtr thirteenInverseOnComplex =
    rader(13, 2, goodThomas(four, three), pairs(six, oddGoodThomas(three)), Merge::yes);
const PlanPtr thirteenInverseSplit = byData(thirteenInverse, thirteenInverseOnComplex);

const PlanPtr seventeen = rader(17, 12, sixteen, sixteen);

const PlanPtr nineteen = rader(19, 2, twice(nine), twice(nineMerged), Merge::no, Merge::yes);
const PlanPtr nineteenInverse = rader(19, 2, goodThomas(nineMerged, two), twice(nine));

const PlanPtr twentyThree = rader(23, 5, twice(eleven), twice(rader11));
const PlanPtr twentyThreeDirect = rader(23, 5, twice(eleven), twice(eleven));

const PlanPtr twentyNine = rader(29, 2, pairs(twice(seven), oddCooleyTukey(seven)), goodThomas(four, seven));
const PlanPtr twentyNineInverse = rader(29, 2, goodThomas(four, seven), pairsOver(seven));

const PlanPtr thirtyOne = rader(31, 21, twice(fifteen), twice(fifteen), Merge::no, Merge::yes);
const PlanPtr thirtyOneUnmerged = rader(31, 21, twice(fifteen), twice(fifteen));

const PlanPtr thirtySeven =
    rader(37, 19, cooleyTukey(three, goodThomas(four, three), Merge::yes), goodThomas(four, nine));
const PlanPtr thirtySevenHartley =
    rader(37, 19, cooleyTukey(three, goodThomas(four, three)),
          pairs(twice(nineMerged), oddByThree(six, oddGoodThomas(three))), Merge::no, Merge::yes);
const PlanPtr thirtySevenInverse =
    rader(37, 2, goodThomas(four, nineSplit), pairs(cooleyTukey(three, six), oddByThree(six, oddCooleyTukey(three))),
          Merge::yes);

const PlanPtr fortyOne = rader(41, 6, pairs(goodThomas(five, four), oddCooleyTukey(five)), goodThomas(five, eight));
const PlanPtr fortyOneInverse =
    rader(41, 6, goodThomas(five, eight), pairs(goodThomas(five, four), oddCooleyTukey(five)));

const PlanPtr fortyThree = rader(43, 3, twice(twentyOne), twice(twentyOne), Merge::no, Merge::yes);
const PlanPtr fortyThreeInverse = rader(43, 3, twice(twentyOne), twice(twentyOne), Merge::yes);

const PlanPtr fortySeven = rader(47, 5, twice(twentyThree), twice(twentyThreeDirect));
const PlanPtr fortySevenInverse = rader(47, 5, twice(twentyThreeDirect), twice(twentyThree));

PlanPtr fiftyThreeOver(const PlanPtr& inner) {
  return rader(53, 45, goodThomas(four, byData(inner, thirteenOnComplex)), pairs(twice(inner), oddCooleyTukey(inner)));
}
const PlanPtr fiftyThree = fiftyThreeOver(thirteen);
const PlanPtr fiftyThreeInverse = rader(53, 2, goodThomas(four, thirteenInverseSplit), pairsOver(thirteen));

const PlanPtr fiftyNine = rader(59, 2, twice(twentyNine), twice(twentyNine));
const PlanPtr fiftyNineInverse = rader(59, 2, twice(twentyNineInverse), twice(twentyNine));

const PlanPtr sixtyOne = rader(61, 2, pairs(twice(fifteen), oddCooleyTukey(fifteen, Merge::yes)),
                               goodThomas(four, fifteen), Merge::no, Merge::yes);
const PlanPtr sixtyOneInverse = rader(61, 2, goodThomas(fifteen, four), pairsOver(fifteen));

// ---- The table

const std::vector<RealPlans> kRealPlans{
    //    forward, Hartley, inverse
    /*  2 */ {two, two, two},
    /*  3 */ {three, three, three},
    /*  4 */ {four, four, four},
    /*  5 */ {five, five, five},
    /*  6 */ {six, six, six},
    /*  7 */ {seven, seven, seven},
    /*  8 */ {eight, eight, eight},
    /*  9 */ {nine, nine, nineMerged},
    /* 10 */ {goodThomas(five, two), twice(five), goodThomas(five, two)},
    /* 11 */ {eleven, eleven, rader11},
    /* 12 */ {goodThomas(four, three), goodThomas(three, four), goodThomas(four, three)},
    /* 13 */ {thirteen, thirteenHartley, thirteenInverse},
    /* 14 */ {twice(seven), twice(seven), twice(seven)},
    /* 15 */ {goodThomas(three, five), fifteen, fifteen},
    /* 16 */ {sixteen, sixteen, sixteen},
    /* 17 */ {seventeen, seventeen, seventeen},
    /* 18 */ {twice(nine), goodThomas(nineMerged, two), goodThomas(nineMerged, two)},
    /* 19 */ {nineteen, nineteen, nineteenInverse},
    /* 20 */ {goodThomas(five, four), goodThomas(four, five), goodThomas(five, four)},
    /* 21 */ {twentyOne, twentyOne, twentyOne},
    /* 22 */ {twice(eleven), twice(eleven), twice(rader11)},
    /* 23 */ {twentyThree, twentyThreeDirect, twentyThreeDirect},
    /* 24 */ {goodThomas(three, eight), goodThomas(three, eight), goodThomas(three, eight)},
    /* 25 */ {twentyFive, twentyFive, twentyFive},
    /* 26 */ {goodThomas(thirteen, two), goodThomas(thirteen, two), goodThomas(thirteenInverse, two)},
    /* 27 */ {cooleyTukey(nine, three), twentySevenMerged, twentySevenMerged},
    /* 28 */ {goodThomas(four, seven), goodThomas(seven, four), goodThomas(four, seven)},
    /* 29 */ {twentyNine, twentyNine, twentyNineInverse},
    /* 30 */ {goodThomas(five, six), goodThomas(two, five, three), twice(fifteen)},
    /* 31 */ {thirtyOne, thirtyOneUnmerged, thirtyOneUnmerged},
    /* 32 */ {powerOfTwo(32), powerOfTwo(32, OddHalf::pairs), powerOfTwo(32, OddHalf::pairs)},
    /* 33 */ {goodThomas(eleven, three), goodThomas(three, rader11), goodThomas(rader11, three)},
    /* 34 */ {twice(seventeen), goodThomas(seventeen, two), twice(seventeen)},
    /* 35 */ {goodThomas(seven, five), goodThomas(five, seven), goodThomas(seven, five)},
    /* 36 */ {goodThomas(nine, four), goodThomas(four, nineMerged), goodThomas(nineMerged, four)},
    /* 37 */ {thirtySeven, thirtySevenHartley, thirtySevenInverse},
    /* 38 */ {goodThomas(nineteen, two), goodThomas(nineteen, two), goodThomas(nineteenInverse, two)},
    /* 39 */
    {goodThomas(thirteenOver(6), three), goodThomas(thirteenOver(6), three), goodThomas(three, thirteenInverseSplit)},
    /* 40 */ {goodThomas(eight, five), goodThomas(five, eight), goodThomas(five, eight)},
    /* 41 */ {fortyOne, fortyOne, fortyOneInverse},
    /* 42 */ {goodThomas(seven, six), twice(twentyOne), goodThomas(seven, six)},
    /* 43 */ {fortyThree, fortyThree, fortyThreeInverse},
    /* 44 */ {goodThomas(eleven, four), goodThomas(four, rader11), goodThomas(rader11, four)},
    /* 45 */ {goodThomas(five, nine), goodThomas(nineMerged, five), goodThomas(nineMerged, five)},
    /* 46 */ {twice(twentyThree), goodThomas(twentyThreeDirect, two), twice(twentyThreeDirect)},
    /* 47 */ {fortySeven, fortySeven, fortySevenInverse},
    /* 48 */
    {goodThomas(sixteen, three), goodThomas(three, powerOfTwo(16, OddHalf::pairsOf2)),
     goodThomas(three, powerOfTwo(16, OddHalf::pairsOf2))},
    /* 49 */ {cooleyTukey(seven, seven), cooleyTukey(seven, seven), cooleyTukey(seven, seven)},
    /* 50 */ {goodThomas(twentyFive, two), goodThomas(twentyFive, two), goodThomas(twentyFive, two)},
    /* 51 */ {goodThomas(seventeen, three), goodThomas(three, seventeen), goodThomas(seventeen, three)},
    /* 52 */ {goodThomas(thirteen, four), goodThomas(thirteen, four), goodThomas(four, thirteenInverseSplit)},
    /* 53 */ {fiftyThree, fiftyThreeOver(thirteenInHartley53), fiftyThreeInverse},
    /* 54 */ {twice(cooleyTukey(nine, three)), goodThomas(twentySevenMerged, two), twice(twentySevenMerged)},
    /* 55 */ {goodThomas(eleven, five), goodThomas(five, rader11), goodThomas(rader11, five)},
    /* 56 */ {goodThomas(seven, eight), goodThomas(eight, seven), goodThomas(eight, seven)},
    /* 57 */ {goodThomas(nineteen, three), goodThomas(nineteen, three), goodThomas(nineteenInverse, three)},
    /* 58 */ {twice(twentyNine), twice(twentyNine), twice(twentyNineInverse)},
    /* 59 */ {fiftyNine, fiftyNine, fiftyNineInverse},
    /* 60 */ {goodThomas(three, five, four), goodThomas(four, five, three), goodThomas(fifteen, four)},
    /* 61 */ {sixtyOne, sixtyOne, sixtyOneInverse},
    /* 62 */ {goodThomas(thirtyOne, two), goodThomas(thirtyOneUnmerged, two), goodThomas(thirtyOneUnmerged, two)},
    /* 63 */ {goodThomas(seven, nine), goodThomas(seven, nine), goodThomas(seven, nineSplit)},
    /* 64 */ {powerOfTwo(64), powerOfTwo(64, OddHalf::radix2), powerOfTwo(64, OddHalf::radix2)},
};

} // namespace

const RealPlans& realPlans(int length) {
  return number::at(kRealPlans, length - 2);
}

} // namespace tfmgen::plan
