// "Create Finite Element Mesh": the checks, in their order, and the girder mesh
// that the command builds.
#include "TestSession.h"
#include "editing/Selection.h"
#include "mesh/frmBeamShape.h"
#include "model/VELKMain.h"
#include "view/View.h"

#include <functional>
#include <string>
#include <vector>

namespace velk::test {
namespace {

class GirderGenerator : public SessionTest {
protected:
  // The dialog as it opens, with the given changes typed in, then the command.
  frmBeamShape Run(const std::function<void(frmBeamShape&)>& edit = {}) {
    frmBeamShape form;
    form.Form_Activate();
    if (edit) edit(form);
    form.cmdGenerate_Click();
    return form;
  }
  Mesh& m() { return gMesh(); }
  double X(long node) { return m().Nodes().Item(node)->xcoord; }
  double Y(long node) { return m().Nodes().Item(node)->ycoord; }
};

TEST_F(GirderGenerator, DefaultGirder) {
  int toolbarMode = -1;
  gView().PropertyMode = 4;
  gView().MeshMode = 1;
  hooks().updateToolBar = [&] { toolbarMode = gView().PropertyMode; };
  gSelection().AddObject(std::make_shared<Nodeb>());

  frmBeamShape form = Run();
  EXPECT_TRUE(form.Unloaded);
  EXPECT_TRUE(host.messages.empty());

  Nodes& nodes = m().Nodes();
  EXPECT_EQ(nodes.NumberNodesX(), 15);
  EXPECT_EQ(nodes.NumberNodesY(), 4);
  ASSERT_EQ(nodes.Count(), 60);
  ASSERT_EQ(m().fourNodes().Count(), 42);
  ASSERT_EQ(m().twoNodes().Count(), 101);
  EXPECT_EQ(X(1), 0);
  EXPECT_EQ(Y(1), 0);
  EXPECT_EQ(Y(4), 16.5);
  EXPECT_EQ(X(60), 120);
  EXPECT_EQ(Y(60), 16.5);
  EXPECT_EQ(X(57), 120);
  EXPECT_EQ(Y(57), 0);

  for (long i = 1; i <= 101; ++i) {
    const twoNode& s = *m().twoNodes().Item(i);
    bool flange = (i >= 1 && i <= 14) || (i >= 43 && i <= 56);
    EXPECT_EQ(s.width, flange ? 12.0f : 0.0f) << "stiffener " << i;
    EXPECT_EQ(s.Thickness, flange ? 0.5f : 0.0f) << "stiffener " << i;
    EXPECT_EQ(IsTrue(s.PropertyDefined), flange) << "stiffener " << i;
    EXPECT_FLOAT_EQ(s.CPX, (s.Node1->xcoord + s.Node2->xcoord) * 0.5f);
  }
  for (const auto& p : m().fourNodes()) {
    EXPECT_EQ(p->Thickness, 0.5f);
    EXPECT_TRUE(IsTrue(p->PropertyDefined));
    EXPECT_EQ(p->vID, p->ID);
  }
  EXPECT_EQ(m().fourNodes().MaxThickness(), 0.5f);
  EXPECT_EQ(m().fourNodes().MaxvID, 42);
  EXPECT_EQ(m().twoNodes().MaxvID, 28);
  EXPECT_EQ(m().twoNodes().Item(43)->vID, 15);
  EXPECT_EQ(nodes.MaxvID, 60);
  for (const auto& n : nodes) {
    EXPECT_TRUE(IsTrue(n->Connected));
    EXPECT_FALSE(IsTrue(n->PropertyDefined()));
  }
  EXPECT_EQ(gMaterial().MOE, 29000.0f);
  EXPECT_EQ(gMaterial().PR, 0.3f);
  EXPECT_EQ(gBeamShape().ProportionalMesh, 0);
  EXPECT_EQ(gSelection().SelectedCounter(), 0);
  // The tool bar was updated before the view reset the edit mode.
  EXPECT_EQ(toolbarMode, 4);
  EXPECT_EQ(gView().PropertyMode, 1);
  EXPECT_EQ(gView().MeshMode, 3);
}

TEST_F(GirderGenerator, TaperedWebSteppedByColumn) {
  Run([](frmBeamShape& f) {
    f.txtBWTE = "0.25";
    f.txtNumXElements = "4";
  });
  ASSERT_EQ(m().fourNodes().Count(), 12);
  const float expected[] = {0.46875f, 0.40625f, 0.34375f, 0.28125f};
  for (long i = 1; i <= 12; ++i)
    EXPECT_EQ(m().fourNodes().Item(i)->Thickness, expected[(i - 1) / 3]) << "plate " << i;
  EXPECT_EQ(m().fourNodes().MaxThickness(), 0.46875f);
  EXPECT_EQ(gBeamShape().Web_TE, 0.25f);
}

TEST_F(GirderGenerator, OffsetLowersTheWholeFarSection) {
  Run([](frmBeamShape& f) { f.txtOffset = "2"; });
  EXPECT_EQ(gBeamShape().Offset, 2.0f);
  EXPECT_EQ(Y(57), -2);
  EXPECT_EQ(Y(60), 14.5);
  EXPECT_EQ(Y(1), 0);
  EXPECT_EQ(Y(4), 16.5);
}

TEST_F(GirderGenerator, OffsetWithProportionalMeshStaysUniform) {
  Run([](frmBeamShape& f) {
    f.txtOffset = "2";
    f.chkProportionalMesh = 1;
  });
  EXPECT_EQ(gBeamShape().ProportionalMesh, 1);
  for (long i = 1; i <= 15; ++i)
    EXPECT_FLOAT_EQ(m().Nodes().Item((i - 1) * 4 + 1)->xcoord, (i - 1) * (120.0f / 14.0f));
}

TEST_F(GirderGenerator, DeeperFarEndGrowsDownwardFromAStraightTop) {
  Run([](frmBeamShape& f) { f.txtBWHE = "32"; });
  EXPECT_EQ(Y(57), -16);
  EXPECT_EQ(Y(60), 16.5);
  for (long i = 1; i <= 15; ++i) EXPECT_EQ(Y((i - 1) * 4 + 4), 16.5) << "column " << i;
}

TEST_F(GirderGenerator, DeeperFarEndWithProportionalMeshGradesTheColumns) {
  Run([](frmBeamShape& f) {
    f.txtBWHE = "32";
    f.txtNumXElements = "6";
    f.chkProportionalMesh = 1;
  });
  ASSERT_EQ(m().Nodes().Count(), 7 * 4);
  // Element lengths grow so that the last is to the first as the depths.
  double first = X(5) - X(1);
  double last = X(25) - X(21);
  EXPECT_NEAR(last / first, 32.5 / 16.5, 1e-4);
  EXPECT_EQ(X(25), 120);
}

TEST_F(GirderGenerator, ProportionalMeshWithEqualDepthsIsEven) {
  Run([](frmBeamShape& f) { f.chkProportionalMesh = 1; });
  EXPECT_EQ(gBeamShape().ProportionalMesh, 1);
  EXPECT_FLOAT_EQ(m().Nodes().Item(5)->xcoord, 120.0f / 14.0f);
}

TEST_F(GirderGenerator, MissingTopFlangeAtEndOne) {
  frmBeamShape form = Run([](frmBeamShape& f) { f.txtBTFW = "0"; });
  ASSERT_TRUE(form.Unloaded);
  EXPECT_EQ(form.txtBTFW, "0");
  EXPECT_EQ(form.txtBTFT, "0");
  EXPECT_EQ(gBeamShape().Top_Flange_W, 0.0f);
  EXPECT_EQ(gBeamShape().Top_Flange_T, 0.0f);
  EXPECT_EQ(Y(4), 16.25);
  // The top row tapers from nothing to the full flange at End 2.
  const twoNode& first = *m().twoNodes().Item(43);
  EXPECT_FLOAT_EQ(first.width, 12.0f * first.CPX / 120.0f);
  EXPECT_TRUE(IsTrue(first.PropertyDefined));
}

TEST_F(GirderGenerator, FlangeFadingOutTowardsEndTwo) {
  frmBeamShape form = Run([](frmBeamShape& f) { f.txtBTFTE = "0"; });
  EXPECT_EQ(form.txtBTFWE, "0");
  EXPECT_EQ(gBeamShape().Top_Flange_WE, 0.0f);
  for (long i = 43; i <= 56; ++i) {
    const twoNode& s = *m().twoNodes().Item(i);
    EXPECT_NEAR(s.width, 12.0 - 12.0 * s.CPX / 120.0, 2e-6);
    EXPECT_NEAR(s.Thickness, 0.5 - 0.5 * s.CPX / 120.0, 2e-7);
    EXPECT_TRUE(IsTrue(s.PropertyDefined)) << i;
  }
  EXPECT_EQ(m().twoNodes().MaxvID, 28);
}

TEST_F(GirderGenerator, CountsRoundHalfToEven) {
  Run([](frmBeamShape& f) {
    f.txtNumXElements = "2.5";
    f.txtNumYElements = "3.5";
  });
  EXPECT_EQ(m().Nodes().NumberNodesX(), 3);
  EXPECT_EQ(m().Nodes().NumberNodesY(), 5);
}

TEST_F(GirderGenerator, NegativeDimensionsAndLargePoissonRatioPass) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.txtBL = "-60";
    f.txtPR = "5";
    f.txtBBFW = "-3";
  });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(X(60), -60);
  EXPECT_EQ(gMaterial().PR, 5.0f);
  EXPECT_FALSE(IsTrue(m().twoNodes().Item(1)->PropertyDefined)); // negative width
}

TEST_F(GirderGenerator, MaterialAndParametersAreStored) {
  Run([](frmBeamShape& f) {
    f.txtMOE = "200000";
    f.txtPR = "0.25";
    f.txtBTFWE = "10";
    f.txtBBFTE = "0.75";
  });
  EXPECT_EQ(gMaterial().MOE, 200000.0f);
  EXPECT_EQ(gMaterial().PR, 0.25f);
  EXPECT_EQ(gBeamShape().Top_Flange_WE, 10.0f);
  EXPECT_EQ(gBeamShape().Bot_Flange_TE, 0.75f);
  // The deeper bottom flange at End 2 moves the bottom line down by a quarter.
  EXPECT_EQ(Y(57), -0.125);
}

// ---- checks ----

struct CheckCase {
  const char* name;
  std::function<void(frmBeamShape&)> edit;
  const char* message;
};

class GirderChecks : public GirderGenerator, public ::testing::WithParamInterface<CheckCase> {};

TEST_P(GirderChecks, FirstFailingCheckSpeaksAndNothingIsBuilt) {
  frmBeamShape form = Run(GetParam().edit);
  EXPECT_FALSE(form.Unloaded);
  EXPECT_EQ(host.Texts(), std::vector<std::string>{GetParam().message});
  EXPECT_EQ(m().Nodes().Count(), 0);
  EXPECT_EQ(gBeamShape().Length, 120.0f);
  EXPECT_EQ(gBeamShape().Top_Flange_W, 12.0f);
  EXPECT_EQ(gMaterial().MOE, 29000.0f);
}

const char* kNumbers = "Input Data Error : Numbers!";
const char* kWeb = "Invalid Input Data : Beam Web!";

INSTANTIATE_TEST_SUITE_P(
    InOrder, GirderChecks,
    ::testing::Values(
        CheckCase{"LengthNotANumber", [](frmBeamShape& f) { f.txtBL = "abc"; }, kNumbers},
        CheckCase{"EmptyCount", [](frmBeamShape& f) { f.txtNumYElements = ""; }, kNumbers},
        CheckCase{"OffsetNotANumber", [](frmBeamShape& f) { f.txtOffset = "x"; }, kNumbers},
        CheckCase{"NumbersBeforeValues",
                  [](frmBeamShape& f) {
                    f.txtNumXElements = "0";
                    f.txtBBFTE = "1..";
                  },
                  kNumbers},
        CheckCase{"NoLongitudinal", [](frmBeamShape& f) { f.txtNumXElements = "0"; },
                  "Invalid Input Data : Longitudinal!"},
        CheckCase{"LongitudinalRoundsToZero", [](frmBeamShape& f) { f.txtNumXElements = "0.4"; },
                  "Invalid Input Data : Longitudinal!"},
        CheckCase{"NegativeLongitudinal", [](frmBeamShape& f) { f.txtNumXElements = "-3"; },
                  "Invalid Input Data : Longitudinal!"},
        CheckCase{"LongitudinalBeforeTransverse",
                  [](frmBeamShape& f) {
                    f.txtNumXElements = "0";
                    f.txtNumYElements = "0";
                  },
                  "Invalid Input Data : Longitudinal!"},
        CheckCase{"NoTransverse", [](frmBeamShape& f) { f.txtNumYElements = "0.5"; },
                  "Invalid Input Data : Transverse!"},
        CheckCase{"TransverseBeforeMaterial",
                  [](frmBeamShape& f) {
                    f.txtNumYElements = "0";
                    f.txtMOE = "0";
                    f.txtPR = "0";
                  },
                  "Invalid Input Data : Transverse!"},
        CheckCase{"ZeroModulus", [](frmBeamShape& f) { f.txtMOE = "0"; },
                  "Invalid Input Data : MoE!"},
        CheckCase{"NegativeModulus", [](frmBeamShape& f) { f.txtMOE = "-29000"; },
                  "Invalid Input Data : MoE!"},
        CheckCase{"ModulusBeforePoisson",
                  [](frmBeamShape& f) {
                    f.txtMOE = "0";
                    f.txtPR = "0";
                  },
                  "Invalid Input Data : MoE!"},
        CheckCase{"ZeroPoisson", [](frmBeamShape& f) { f.txtPR = "0"; },
                  "Invalid Input Data : PR!"},
        CheckCase{"PoissonBeforeWeb",
                  [](frmBeamShape& f) {
                    f.txtPR = "-0.1";
                    f.txtBWT = "0";
                  },
                  "Invalid Input Data : PR!"},
        CheckCase{"NoWebThickness", [](frmBeamShape& f) { f.txtBWT = "0"; }, kWeb},
        CheckCase{"NoWebHeight", [](frmBeamShape& f) { f.txtBWH = "0.0"; }, kWeb},
        CheckCase{"NoWebThicknessAtEndTwo", [](frmBeamShape& f) { f.txtBWTE = "0"; }, kWeb},
        CheckCase{"NoWebHeightAtEndTwo", [](frmBeamShape& f) { f.txtBWHE = "-0"; }, kWeb},
        CheckCase{"WebBeforeLength",
                  [](frmBeamShape& f) {
                    f.txtBL = "0";
                    f.txtBWHE = "0";
                  },
                  kWeb},
        CheckCase{"NoLength", [](frmBeamShape& f) { f.txtBL = "0"; },
                  "Invalid Input Data : Beam Length!"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GirderGenerator, FlangeFieldsZeroedByTheChecksStayZeroed) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.txtBTFW = "0";
    f.txtBBFT = "0";
    f.txtBWHE = "0";
  });
  EXPECT_EQ(host.Texts(), std::vector<std::string>{kWeb});
  EXPECT_EQ(form.txtBTFT, "0");
  EXPECT_EQ(form.txtBBFW, "0");
  EXPECT_EQ(form.txtBTFTE, "0.5"); // End 2 flanges come after the End 1 web
  EXPECT_EQ(gBeamShape().Top_Flange_T, 0.5f);
}

TEST_F(GirderGenerator, NoFlangeIsZeroedBeforeTheMaterialChecks) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.txtPR = "0";
    f.txtBTFW = "0";
  });
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Invalid Input Data : PR!"});
  EXPECT_EQ(form.txtBTFT, "0.5");
}

// ---- the existing model ----

class GirderOverMesh : public GirderGenerator {
protected:
  void SetUp() override {
    GirderGenerator::SetUp();
    Run();
    ASSERT_EQ(m().Nodes().Count(), 60);
    gAnalysis().Title = "Keep";
    gMaterial().MOE = 12345;
    host.messages.clear();
  }
  void ExpectOldModel() {
    EXPECT_EQ(m().Nodes().Count(), 60);
    EXPECT_EQ(m().twoNodes().Count(), 101);
    EXPECT_EQ(gAnalysis().Title, "Keep");
    EXPECT_EQ(gMaterial().MOE, 12345.0f);
    EXPECT_EQ(gBeamShape().Length, 120.0f);
  }
};

TEST_F(GirderOverMesh, CancelAtTheWarningChangesNothing) {
  host.msgAnswers.push_back(vbCancel);
  frmBeamShape form = Run([](frmBeamShape& f) { f.txtBL = "60"; });
  ASSERT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(host.messages[0].text, "Existing Mesh will be destroyed!");
  EXPECT_EQ(host.messages[0].title, "Warning");
  EXPECT_EQ(host.messages[0].buttons & 7, vbOKCancel);
  EXPECT_FALSE(form.Unloaded);
  ExpectOldModel();
}

TEST_F(GirderOverMesh, CheckFailureAfterTheWarningKeepsTheOldMesh) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.txtBL = "0";
    f.txtMOE = "1";
  });
  EXPECT_EQ(host.Texts(), (std::vector<std::string>{"Existing Mesh will be destroyed!",
                                                    "Invalid Input Data : Beam Length!"}));
  EXPECT_FALSE(form.Unloaded);
  ExpectOldModel();
}

TEST_F(GirderOverMesh, OkReplacesTheModelButNotTheOptions) {
  gAnalysis().MaxCycle = 15;
  frmBeamShape form = Run([](frmBeamShape& f) { f.txtNumXElements = "2"; });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_EQ(host.Texts(), std::vector<std::string>{"Existing Mesh will be destroyed!"});
  EXPECT_EQ(m().Nodes().Count(), 12);
  EXPECT_EQ(gAnalysis().Title, "No Title");
  EXPECT_EQ(gAnalysis().MaxCycle, 15);
  EXPECT_EQ(gMaterial().MOE, 12345.0f); // from the field, filled from the old material
}

TEST_F(GirderGenerator, EmptyMeshNeedsNoWarningAndKeepsTheRunIdentity) {
  gAnalysis().Title = "Before";
  Run();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(gAnalysis().Title, "Before");
}

struct RefusalCase {
  const char* name;
  std::function<void(frmBeamShape&)> edit;
  const char* fragment; // a part of the message
};

class GirderRefusals : public GirderOverMesh, public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(GirderRefusals, RefusedBeforeAnythingIsReplaced) {
  frmBeamShape form = Run(GetParam().edit);
  EXPECT_FALSE(form.Unloaded);
  auto texts = host.Texts();
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0], "Existing Mesh will be destroyed!");
  EXPECT_NE(texts[1].find(GetParam().fragment), std::string::npos) << texts[1];
  ExpectOldModel();
}

INSTANTIATE_TEST_SUITE_P(
    Limits, GirderRefusals,
    ::testing::Values(
        RefusalCase{"LongitudinalCountAbove32766",
                    [](frmBeamShape& f) { f.txtNumXElements = "32767"; }, "Longitudinal"},
        RefusalCase{"LongitudinalCountBeyond16Bits",
                    [](frmBeamShape& f) { f.txtNumXElements = "40000"; }, "Longitudinal"},
        RefusalCase{"TransverseCountAbove32766",
                    [](frmBeamShape& f) { f.txtNumYElements = "32767"; }, "Transverse"},
        RefusalCase{"TooManyNodes",
                    [](frmBeamShape& f) {
                      f.txtNumXElements = "2000";
                      f.txtNumYElements = "2000";
                    },
                    "Elements"},
        RefusalCase{"LengthBeyondASingle", [](frmBeamShape& f) { f.txtBL = "1e39"; }, "range"},
        RefusalCase{"ModulusBeyondASingle", [](frmBeamShape& f) { f.txtMOE = "-4e38"; },
                    "range"},
        RefusalCase{"OffsetBeyondADouble", [](frmBeamShape& f) { f.txtOffset = "1e400"; },
                    "range"},
        RefusalCase{"ProportionalWithNegativeDepthRatio",
                    [](frmBeamShape& f) {
                      f.chkProportionalMesh = 1;
                      f.txtBWHE = "-20";
                    },
                    "Proportional"},
        RefusalCase{"ProportionalWithNoDepthAtEndOne",
                    [](frmBeamShape& f) {
                      f.chkProportionalMesh = 1;
                      f.txtBWH = "-0.5";
                    },
                    "Proportional"},
        RefusalCase{"ProportionalWithOneUnequalElement",
                    [](frmBeamShape& f) {
                      f.chkProportionalMesh = 1;
                      f.txtNumXElements = "1";
                      f.txtBWHE = "32";
                    },
                    "Proportional"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(GirderGenerator, ProportionalWithOneElementOfEqualDepthsIsBuilt) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.chkProportionalMesh = 1;
    f.txtNumXElements = "1";
  });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_EQ(m().Nodes().Count(), 8);
  EXPECT_EQ(X(5), 120);
}

TEST_F(GirderGenerator, LargestCountsThatFitAreAccepted) {
  frmBeamShape form = Run([](frmBeamShape& f) {
    f.txtNumXElements = "32766";
    f.txtNumYElements = "1";
  });
  EXPECT_TRUE(form.Unloaded);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(m().Nodes().NumberNodesX(), 32767);
  EXPECT_EQ(m().Nodes().Count(), 32767 * 2);
  EXPECT_EQ(X(32767 * 2), 120);
}

} // namespace
} // namespace velk::test
