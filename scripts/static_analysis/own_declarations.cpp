// For clang-tidy, which loads it: takes the declarations of system headers out of what its checks walk
// through. They were nine tenths of that walk, and what is found there is never shown. The analysis of paths
// sees all.
#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Frontend/CompilerInstance.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

namespace {

class OwnDeclarations : public clang::ASTConsumer
{
    void HandleTranslationUnit(clang::ASTContext& context) override
    {
        const clang::SourceManager& sources = context.getSourceManager();
        std::vector<clang::Decl*> own;
        for (clang::Decl* declaration : context.getTranslationUnitDecl()->noload_decls()) {
            const auto place = sources.getExpansionLoc(declaration->getLocation());
            if (place.isValid() && !sources.isInSystemHeader(place)) {
                own.push_back(declaration);
            }
        }
        context.setTraversalScope(own);
    }
};

class BeforeTheChecks : public clang::PluginASTAction
{
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance& /*compiler*/,
                                                          llvm::StringRef /*file*/) override
    {
        return std::make_unique<OwnDeclarations>();
    }
    bool ParseArgs(const clang::CompilerInstance& /*compiler*/,
                   const std::vector<std::string>& /*arguments*/) override
    {
        return true;
    }
    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<BeforeTheChecks> registration("own-declarations",
                                                                       "leaves system headers out");

} // namespace
